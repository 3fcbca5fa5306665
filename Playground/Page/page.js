// Shows what the program sends, and sends what the user does on the Mac's screen.

import { morph } from '/morph.js';
import { listen, post } from '/link.js';
import { closeMenu, menuIsOpen, showMenu } from '/menus.js';
import { placeSurfaces, showSurfaces } from '/surfaces.js';
import { showDesk } from '/desk.js';
import { showWindow } from '/windows.js';

const screen = document.getElementById('screen');
const bar = document.getElementById('bar');
const appMenus = document.getElementById('app-menus');
const otherMenus = document.getElementById('other-menus');
const said = document.getElementById('said');
const system = document.getElementById('system');
const shade = document.getElementById('shade');
const sheet = document.getElementById('sheet');
let facts = {};

// Messages

function showRegion(name, markup) {
  const region = document.querySelector(`[data-region="${name}"]`);
  if (!region) return;
  const isAtEnd = region.scrollHeight - region.scrollTop - region.clientHeight < 24;
  morph(region, markup);
  if (name === 'log' && isAtEnd) region.scrollTop = region.scrollHeight;
}

const leaving = 180;  // ms; a little longer than the transition of a surface that goes

/** Leaves a surface that closes its content until it is out of sight. Whether that takes a moment. */
function emptyLater(name) {
  const surface = screen.querySelector(`.surface[data-region="${name}"]:not([hidden])`);
  if (!surface || document.documentElement.dataset.motion === 'reduced') return false;
  setTimeout(() => { if (surface.hidden) showRegion(name, ''); }, leaving);
  return true;
}

let beforeSheet = null;  // the focused element before the sheet opened

function showSheet() {
  const isOpen = sheet.childElementCount > 0;
  const changes = isOpen === shade.hidden;
  if (changes && isOpen) beforeSheet = document.activeElement;
  shade.hidden = !isOpen;
  for (const other of [bar, ...screen.querySelectorAll('.surface')]) other.inert = isOpen;
  if (isOpen && (changes || document.activeElement === sheet)) {
    (sheet.querySelector('input:checked, input, .primary') ?? sheet).focus();
  } else if (changes) {
    beforeSheet?.focus({ preventScroll: true });
  }
}

const timeOnly = { hour: '2-digit', minute: '2-digit' };
const longClock = new Intl.DateTimeFormat('en-GB', { weekday: 'short', day: 'numeric', month: 'short', ...timeOnly, second: '2-digit' });
const shortClock = new Intl.DateTimeFormat('en-GB', timeOnly);
const isNarrow = matchMedia('(max-width: 760px)');

function showClocks() {
  if (facts.now === undefined) return;
  for (const clock of document.querySelectorAll('[data-clock]')) {
    const format = clock.dataset.clock === 'bar' && isNarrow.matches ? shortClock : longClock;
    clock.textContent = format.format(facts.now).replaceAll(',', '');
  }
}

/** Shows Velko's menus in place of those of the app that is in front otherwise. */
function showAppMenus() {
  const isVelkoInFront = appMenus.childElementCount > 0;
  appMenus.hidden = !isVelkoInFront;
  otherMenus.hidden = isVelkoInFront;
}

let saidBefore = null;

/** Lets the screen reader of the page say what Velko tells the one of the Mac. */
function say({ count, words } = {}) {
  if (saidBefore !== null && count !== saidBefore) {
    said.textContent = '';  // the same words again are news too
    requestAnimationFrame(() => { said.textContent = words; });
  }
  saidBefore = count;
}

let pinnedAt = 0;  // where pinBar has scrolled the bar to

const isPinned = () =>
  Math.abs(bar.scrollLeft - pinnedAt) < 8 || bar.scrollWidth - bar.scrollLeft - bar.clientWidth < 8;

/** Scrolls the bar to its right end, or as far as the broom stays visible. */
function pinBar() {
  bar.scrollLeft = bar.scrollWidth;
  const broom = document.getElementById('broom')?.getBoundingClientRect();
  if (broom) bar.scrollLeft += Math.min(0, broom.left - bar.getBoundingClientRect().left - 16);
  pinnedAt = bar.scrollLeft;
}

listen((message) => {
  const staysPinned = isPinned();
  const held = document.activeElement?.closest('.surface');  // the surface with the focus, which the message may close
  for (const [name, markup] of Object.entries(message.regions ?? {})) {
    if (markup || !emptyLater(name)) showRegion(name, markup);
  }
  const knewPointer = facts.wantsPointer;
  facts = message.facts ?? facts;
  if (facts.wantsPointer && !knewPointer) post('pointer', pointer);
  screen.classList.toggle('has-notch', facts.notch);
  screen.dataset.displays = facts.displays;
  document.getElementById('asleep').hidden = facts.velko;
  showAppMenus();
  say(facts.said);
  showWindow(system, system.childElementCount > 0);
  showClocks();
  if (staysPinned) pinBar();
  showSheet();  // before the surfaces, so that a surface that opens as the sheet closes gets the focus
  showSurfaces(facts, held);
  showMenu(facts.menuAnchor);
  showDesk(facts);
});

// What the user does in the menu bar and on the desktop

function clickBroom(event, isRight) {
  event.preventDefault();
  post('broom', { right: isRight, option: event.altKey, control: event.ctrlKey && !isRight });
}

screen.addEventListener('click', (event) => {
  const icon = event.target.closest('.status-item');
  if (icon?.id === 'broom') return clickBroom(event, false);
  if (icon?.dataset.pid) {
    return post('icon', { pid: Number(icon.dataset.pid), index: Number(icon.dataset.index) });
  }
  if (event.target.closest('.menu, .surface, .window, .shade, [data-app-menu]')) return undefined;
  return post('click');
});

screen.addEventListener('contextmenu', (event) => {
  if (event.target.closest('#broom')) clickBroom(event, true);
  else if (!event.target.closest('.selectable, input, textarea')) event.preventDefault();
});

// A press outside a menu closes it. A press outside an open panel may close that.
screen.addEventListener('pointerdown', (event) => {
  const surface = event.target.closest('.surface, .window');
  if (!surface) return;
  if (menuIsOpen()) closeMenu();
  const isOther = !surface.matches('.popover, .shelf, .panel');
  if (isOther && screen.querySelector('.popover:not([hidden]), .shelf:not([hidden])')) post('click');
});

bar.addEventListener('keydown', (event) => {
  const items = [...bar.querySelectorAll('button')];
  const at = items.indexOf(document.activeElement);
  const to = { ArrowLeft: at - 1, ArrowRight: at + 1, Home: 0, End: items.length - 1 }[event.key];
  if (to !== undefined) {
    event.preventDefault();
    items[(to + items.length) % items.length]?.focus();
  } else if (event.key === 'ArrowDown') {
    event.preventDefault();
    if (event.repeat) return;
    if (document.activeElement.id === 'broom') clickBroom(event, true);
    else document.activeElement.click();
  }
});

// A key that is held down presses a button only once. It repeats only in fields for text.
document.addEventListener('keydown', (event) => {
  const isWritten = event.key === ' ' ? 'textarea, input[type="text"], input[type="search"]' : 'textarea';
  if (!event.repeat || !['Enter', 'Escape', ' '].includes(event.key) || event.target.matches(isWritten)) return;
  event.preventDefault();
  event.stopPropagation();
}, true);

// The pointer. Velko wants to know it while it reveals on hover, and while icons are revealed.

let pointer = { over: 'desktop' };
let movedAt = 0;

const thousandths = (at, start, length) => Math.round((1000 * (at - start)) / length);

function placeUnder({ target, clientX, clientY }) {
  if (target.closest('#broom')) return { over: 'broom' };
  const { pid, index } = target.closest('.status-item')?.dataset ?? {};
  if (pid) return { over: 'icon', pid: Number(pid), index: Number(index) };
  if (target.closest('.menu-bar')) return { over: 'bar' };
  const shelf = target.closest('[data-surface="shelf"]')?.getBoundingClientRect();
  if (!shelf) return { over: 'desktop' };
  const { left, top, width, height } = shelf;
  return { over: 'shelf', x: thousandths(clientX, left, width), y: thousandths(clientY, top, height) };
}

screen.addEventListener('pointermove', (event) => {
  const now = performance.now();
  const place = placeUnder(event);
  const isSame = ['over', 'pid', 'index'].every((key) => place[key] === pointer[key]);
  pointer = place;
  if (!facts.wantsPointer || (isSame && now - movedAt < 250)) return;
  movedAt = now;
  post('pointer', place);
});

// Sheets

function actOn(button) {
  const body = JSON.parse(button.dataset.body || '{}');
  if (typeof body.file === 'string') body.file = document.querySelector(body.file).value;
  if (body.open) {
    const text = sheet.querySelector('textarea').value;
    const name = sheet.querySelector('input:checked')?.value;
    delete body.open;
    if (text) Object.assign(body, { file: 'Pasted.velko', text });
    else if (name) body.file = name;
  }
  post(button.dataset.action, body);
}

document.addEventListener('click', (event) => {
  const button = event.target.closest('[data-action]');
  if (button) actOn(button);
});

sheet.addEventListener('keydown', (event) => {
  const buttons = [...sheet.querySelectorAll('.sheet-buttons button')];
  if (event.key === 'Escape') buttons[0]?.click();
  if (event.key === 'Enter' && event.target.matches('input')) buttons.at(-1)?.click();
  if (event.key === 'Tab') {
    const stops = [...sheet.querySelectorAll('input, textarea, button')];
    const end = event.shiftKey ? stops[0] : stops.at(-1);
    if (document.activeElement === end) {
      event.preventDefault();
      (event.shiftKey ? stops.at(-1) : stops[0]).focus();
    }
  }
  event.stopPropagation();
});

addEventListener('resize', () => {
  showClocks();
  pinBar();
  placeSurfaces();
  showMenu(facts.menuAnchor);
});
