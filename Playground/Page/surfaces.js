// Velko's surfaces: which are open, where they stand, and what the user does with their controls.

import { post, whileUnderWay } from '/link.js';
import { showDrivenRows } from '/lists.js';
import { showControls } from '/morph.js';
import { bringToFront, keepWindowsInReach, openWindows, showWindow } from '/windows.js';

const screen = document.getElementById('screen');
const surfaces = [...screen.querySelectorAll('.surface')];
const panels = surfaces.filter((each) => each.matches('.popover, .shelf')).reverse();  // in front of all windows
const cameFrom = new Map();  // the focused element before each surface opened

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
  keepWindowsInReach();
}

function opened(surface) {
  if (surface.matches('.panel')) return;
  cameFrom.set(surface, document.activeElement);
  (surface.querySelector('[data-first]') ?? surface).focus({ preventScroll: true });
}

function closed(surface, hadFocus) {
  const before = cameFrom.get(surface);
  cameFrom.delete(surface);
  if (!hadFocus) return;
  const isThere = before?.isConnected && before !== document.body && before.offsetParent !== null;
  (isThere ? before : document.getElementById('broom'))?.focus({ preventScroll: true });
}

let raisedBefore = null;

/** Brings the surfaces to the front that the program has raised since the last message. */
function raise(raised) {
  for (const surface of surfaces) {
    const name = surface.dataset.surface;
    if (raisedBefore && raised[name] !== raisedBefore[name]) bringToFront(surface);
  }
  raisedBefore = raised;
}

/** Shows the surfaces that are open, each with its title. `held` is the surface that had the focus until now. */
export function showSurfaces({ surfaces: open = {}, raised = {} }, held = null) {
  for (const surface of surfaces) {
    const title = open[surface.dataset.surface];
    const isOpen = title !== undefined;
    if (isOpen) surface.ariaLabel = title;
    if (isOpen === !surface.hidden) continue;
    if (surface.matches('.window')) showWindow(surface, isOpen);
    else surface.hidden = !isOpen;
    if (isOpen) opened(surface);
    else closed(surface, surface === held);
  }
  raise(raised);
  showDrivenRows();
  placeSurfaces();
}

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
  if (element.matches('.disclosure-title')) return act(element, element.ariaExpanded !== 'true');
  switch (element.dataset.kind) {
    case 'button': return act(element);
    case 'menu-button': return openMenuOf(element);
    case 'tile': return 'presses' in element.dataset ? act(element) : openMenuOf(element);
    default: return undefined;
  }
}

const keyNames = {
  Space: 'space', Enter: '\u21a9', Tab: '\u21e5', Escape: '\u238b', Backspace: '\u232b', Delete: '\u2326',
  ArrowLeft: '\u2190', ArrowRight: '\u2192', ArrowUp: '\u2191', ArrowDown: '\u2193', Minus: '-', Equal: '=',
  BracketLeft: '[', BracketRight: ']', Semicolon: ';', Quote: "'", Backslash: '\\', Comma: ',', Period: '.', Slash: '/',
};
const heldKeys = { ctrlKey: 'control', altKey: 'option', shiftKey: 'shift', metaKey: 'command' };

/** While a control records keys, the next ones are for it alone, whatever they usually mean. */
document.addEventListener('keydown', (event) => {
  const recorder = screen.querySelector('[data-recording]');
  if (!recorder) return;
  event.preventDefault();
  event.stopImmediatePropagation();
  if (event.repeat || ['Control', 'Alt', 'Shift', 'Meta', 'CapsLock', 'Fn'].includes(event.key)) return;
  const held = Object.keys(heldKeys).filter((key) => event[key]).map((key) => heldKeys[key]);
  const name = keyNames[event.code] ?? event.code.replace(/^(Key|Digit)/, '').toLowerCase();
  post('record', { surface: nameOf(recorder), id: recorder.dataset.id, keys: [...held, name].join('+') });
}, true);

/** Sends a change. If the program refuses it, the control goes back. */
function changed(control, value) {
  const node = control.closest('[data-id]');
  whileUnderWay(control, act(control, value), () => showControls(node));
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
  if (control.matches('[type="checkbox"]')) {
    changed(control, control.checked);
  } else if (control.matches('select')) {
    changed(control, control.selectedIndex);
  } else if (control.matches('.segment input')) {
    changed(control, Number(control.value));
  }
});

// Tiles of apps can be dragged onto groups.
let dragged = '';

screen.addEventListener('dragstart', (event) => {
  dragged = event.target.closest?.('.tile')?.dataset.bundle ?? '';
  if (!dragged) return;
  event.dataTransfer.setData('text/plain', dragged);
  hold(event.target, true);
});
const hold = (tile, isHeld) => post('drag', { surface: nameOf(tile) ?? 'shelf', held: isHeld });
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
screen.addEventListener('dragend', (event) => {
  dragged = '';
  aim(null);
  hold(event.target, false);
});

// The keyboard

function buttonOf(event, surface) {
  if (event.metaKey || event.ctrlKey) return null;
  return surface.querySelector(`[data-shortcut~="${CSS.escape(event.key.toLowerCase())}"]:enabled`);
}

function surfaceWithKeyboard() {
  const active = document.activeElement;
  if (active !== document.body) return surfaceOf(active);
  return [...panels, ...openWindows()].find((each) => !each.hidden && surfaceOf(each));
}

/** Whether the focused control uses this key itself. */
function isTaken(event) {
  const control = document.activeElement;
  if (control.matches('input[type="search"]')) return event.key !== 'Escape';
  if (event.key === 'Enter') return control.matches('button, select');
  if (!event.key.startsWith('Arrow')) return false;
  return control.matches('select, input[type="radio"], .tab, .tile, .scroll, .list');
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

/** Moves to another tile: left and right in reading order, up and down to the nearest tile of the next row. */
function walked(tile, key) {
  const rows = Map.groupBy(surfaceOf(tile).querySelectorAll('.tile:enabled'), (each) => each.parentElement);
  const tiles = [...rows.values()];
  const row = tiles.findIndex((each) => each.includes(tile));
  const at = tiles[row].indexOf(tile);
  const beside = tiles.flat().indexOf(tile);
  const nearest = (other) => other?.[Math.min(at, other.length - 1)];
  const next = {
    ArrowLeft: () => tiles.flat()[beside - 1],
    ArrowRight: () => tiles.flat()[beside + 1],
    ArrowUp: () => nearest(tiles[row - 1]),
    ArrowDown: () => nearest(tiles[row + 1]),
  }[key];
  next?.()?.focus();
  return Boolean(next);
}

/** Command, or Control, and a digit move the app whose tile has the focus. */
function movedByKey(event) {
  const tile = document.activeElement.closest('.tile[data-menu]');
  if (!tile || !(event.metaKey || event.ctrlKey) || !/^[1-3]$/.test(event.key)) return false;
  post('act', { surface: nameOf(tile), id: tile.dataset.id, menuKey: event.key });
  return true;
}

/** From the field to the tiles below it. */
function leftField(event) {
  const field = document.activeElement;
  if (event.key !== 'ArrowDown' || !field.matches('input[type="search"]')) return false;
  const tile = surfaceOf(field)?.querySelector('.tile:enabled');
  tile?.focus();
  return Boolean(tile);
}

function ofControl(control, key) {
  if (control.matches('.tab')) return turned(control, key);
  return control.matches('.tile') && walked(control, key);
}

/** Command, or Control, with a key that works in all of Velko's windows: to find something, or what the menus do. */
function pressedForApp(event, surface) {
  const key = event.key.toLowerCase();
  if (!(event.metaKey || event.ctrlKey) || event.altKey || event.repeat) return false;
  if (key === 'f') {
    const field = surface.querySelector('input[type="search"]:enabled');
    field?.focus();
    field?.select();
    return Boolean(field);
  }
  const isTyped = document.activeElement.matches('input[type="search"]') && document.activeElement.value;
  if (!surface.matches('.window') || !(key === ',' || (key === 'z' && !isTyped))) return false;
  post('app-key', { key, shift: event.shiftKey });
  return true;
}

let keyToldAt = 0;

/** Tells the program about keys in the shelf: it stays open while somebody uses the keyboard there. */
function tellKey(surface) {
  const now = performance.now();
  if (surface.dataset.surface !== 'shelf' || now - keyToldAt < 250) return;
  keyToldAt = now;
  post('key', { surface: 'shelf' });
}

document.addEventListener('keydown', (event) => {
  const surface = surfaceWithKeyboard();
  if (!surface || event.defaultPrevented) return;
  tellKey(surface);
  if (movedByKey(event) || leftField(event) || pressedForApp(event, surface) ||
      (surfaceOf(document.activeElement) && ofControl(document.activeElement, event.key))) {
    event.preventDefault();
    return;
  }
  const button = buttonOf(event, surface);
  if (button && !isTaken(event)) {
    event.preventDefault();
    if (!event.repeat) button.click();
  } else if (event.key === 'Escape') {
    event.preventDefault();
    post('dismiss', { surface: surface.dataset.surface, how: 'escape' });
  }
});
