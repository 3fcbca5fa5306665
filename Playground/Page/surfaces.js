// Velko's surfaces: which are open and where they stand, and what the user does to their controls.

import { post } from '/link.js';

const screen = document.getElementById('screen');
const surfaces = [...screen.querySelectorAll('.surface')];
const frontToBack = ['note', 'shelf', 'setup', 'settings'];
const cameFrom = new Map();  // what had the keyboard before a surface took it

const surfaceOf = (element) => element.closest?.('.surface');
const nameOf = (element) => surfaceOf(element)?.dataset.surface;

// Where they stand

function hangBelowBroom(surface) {
  const area = screen.getBoundingClientRect();
  const broom = document.getElementById('broom')?.getBoundingClientRect();
  const middle = broom ? broom.left + broom.width / 2 - area.left : area.width / 2;
  const width = surface.offsetWidth;
  const left = Math.max(8, Math.min(middle - width / 2, area.width - width - 8));
  surface.style.left = `${left}px`;
  surface.style.top = `${screen.querySelector('.menu-bar').offsetHeight + 8}px`;
  surface.style.setProperty('--arrow', `${middle - left}px`);
}

export function placeSurfaces() {
  for (const surface of surfaces) {
    if (!surface.hidden && surface.matches('.popover, .shelf')) hangBelowBroom(surface);
  }
}

function opened(surface) {
  if (surface.dataset.surface === 'guide') return;
  cameFrom.set(surface, document.activeElement);
  surface.focus({ preventScroll: true });
}

function closed(surface, hadFocus) {
  const before = cameFrom.get(surface);
  cameFrom.delete(surface);
  surface.style.translate = '';
  if (!hadFocus) return;
  const isThere = before?.isConnected && before !== document.body && before.offsetParent !== null;
  (isThere ? before : document.getElementById('broom'))?.focus({ preventScroll: true });
}

/** Shows the surfaces that are open, each under its title. `held` had the keyboard until now. */
export function showSurfaces(open = {}, held = null) {
  for (const surface of surfaces) {
    const title = open[surface.dataset.surface];
    const isOpen = title !== undefined;
    if (isOpen) surface.ariaLabel = title;
    if (isOpen === !surface.hidden) continue;
    surface.hidden = !isOpen;
    if (isOpen) opened(surface);
    else closed(surface, surface === held);
  }
  placeSurfaces();
}

// Windows are dragged by their title bars.
screen.addEventListener('pointerdown', (event) => {
  const bar = event.target.closest('.title-bar');
  if (!bar || event.target.closest('button')) return;
  const surface = surfaceOf(bar);
  const [x, y] = (surface.dataset.moved ?? '0 0').split(' ').map(Number);
  const move = (moved) => {
    const to = [x + moved.clientX - event.clientX, y + moved.clientY - event.clientY];
    surface.dataset.moved = to.join(' ');
    surface.style.translate = `calc(-50% + ${to[0]}px) calc(-50% + ${to[1]}px)`;
  };
  bar.setPointerCapture(event.pointerId);
  bar.addEventListener('pointermove', move);
  bar.addEventListener('lostpointercapture', () => bar.removeEventListener('pointermove', move), { once: true });
});

// Controls

function act(element, value) {
  const node = element.closest('[data-id]');
  const body = { surface: nameOf(element), id: node.dataset.id };
  if (value !== undefined) body.value = value;
  return post('act', body);
}

const openMenuOf = (element) =>
  post('menu', { surface: nameOf(element), id: element.closest('[data-id]').dataset.id });

function clicked(element) {
  if (element.dataset.close) return post('dismiss', { surface: element.dataset.close, how: 'closeButton' });
  if (element.matches('.tab')) return act(element, Number(element.dataset.value));
  switch (element.dataset.kind) {
    case 'button': return act(element);
    case 'menu-button': return openMenuOf(element);
    case 'tile': return 'presses' in element.dataset ? act(element) : openMenuOf(element);
    default: return undefined;
  }
}

/** What the program does not take is put back as it was. */
async function changed(control, value, restore) {
  if (!(await act(control, value))) restore();
}

screen.addEventListener('click', (event) => {
  const button = event.target.closest('button');
  if (button && surfaceOf(button)) clicked(button);
});

screen.addEventListener('contextmenu', (event) => {
  const tile = event.target.closest('.tile[data-menu]');
  if (!tile) return;
  event.preventDefault();
  openMenuOf(tile);
});

screen.addEventListener('change', (event) => {
  const control = event.target;
  if (!surfaceOf(control)) return;
  if (control.matches('[role="switch"]')) {
    changed(control, control.checked, () => { control.checked = !control.checked; });
  } else if (control.matches('select')) {
    const before = [...control.options].findIndex((option) => option.defaultSelected);
    changed(control, control.selectedIndex, () => { control.selectedIndex = before; });
  } else if (control.matches('.segment input')) {
    const track = control.closest('.segment-track');
    const before = track.querySelector('input[checked]');
    changed(control, Number(control.value), () => { if (before) before.checked = true; });
  }
});

// Apps are dragged onto groups that take them.
let dragged = '';

screen.addEventListener('dragstart', (event) => {
  dragged = event.target.closest?.('.tile')?.dataset.bundle ?? '';
  if (dragged) event.dataTransfer.setData('text/plain', dragged);
});
const targetOf = (event) => (dragged ? event.target.closest?.('[data-takes-apps]') : null);
function aim(group) {
  for (const each of screen.querySelectorAll('.is-target')) each.classList.toggle('is-target', each === group);
  group?.classList.add('is-target');
}
screen.addEventListener('dragover', (event) => {
  const group = targetOf(event);
  if (group) event.preventDefault();
  aim(group);
});
screen.addEventListener('drop', (event) => {
  const group = targetOf(event);
  if (!group) return;
  event.preventDefault();
  act(group, dragged);
});
screen.addEventListener('dragend', () => { dragged = ''; aim(null); });

// The keyboard

function buttonOf(event, surface) {
  if (event.metaKey || event.ctrlKey) return null;
  return surface.querySelector(`[data-shortcut="${CSS.escape(event.key.toLowerCase())}"]:enabled`);
}

function surfaceWithKeyboard() {
  const active = document.activeElement;
  if (active !== document.body) return surfaceOf(active);
  return frontToBack.map((name) => surfaces.find((each) => each.dataset.surface === name))
    .find((surface) => !surface.hidden);
}

/** Keys that the control with the keyboard wants for itself. */
function isTaken(event) {
  const control = document.activeElement;
  if (event.key === 'Enter') return control.matches('button, select');
  if (!event.key.startsWith('Arrow')) return false;
  return control.matches('select, input[type="radio"], .tab, .tile, .scroll');
}

function turned(tab, key) {
  const tabs = [...tab.parentElement.children];
  const by = { ArrowLeft: -1, ArrowRight: 1 }[key];
  if (!by) return false;
  const next = tabs[(tabs.indexOf(tab) + by + tabs.length) % tabs.length];
  next.click();
  next.focus();
  return true;
}

function walked(tile, key) {
  const tiles = [...surfaceOf(tile).querySelectorAll('.tile:enabled')];
  const by = { ArrowLeft: -1, ArrowRight: 1, ArrowUp: -1, ArrowDown: 1 }[key];
  const next = by && tiles[tiles.indexOf(tile) + by];
  next?.focus();
  return Boolean(by);
}

function ofControl(control, key) {
  if (control.matches('.tab')) return turned(control, key);
  return control.matches('.tile') && walked(control, key);
}

document.addEventListener('keydown', (event) => {
  const surface = surfaceWithKeyboard();
  if (!surface || event.defaultPrevented) return;
  if (surfaceOf(document.activeElement) && ofControl(document.activeElement, event.key)) {
    event.preventDefault();
    return;
  }
  const button = buttonOf(event, surface);
  if (button && !isTaken(event)) {
    event.preventDefault();
    button.click();
  } else if (event.key === 'Escape') {
    event.preventDefault();
    post('dismiss', { surface: surface.dataset.surface, how: 'escape' });
  }
});
