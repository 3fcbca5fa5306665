// The open menu: where it stands, and how the pointer and the keyboard move through it.

import { post } from '/link.js';

const screen = document.getElementById('screen');
const menu = document.getElementById('menu');
let anchorName = '';
let openPlace = '';  // place of the item whose submenu is open
let typed = '';
let typedAt = 0;
let cameFrom = null;  // the focused element before the menu opened

export const menuIsOpen = () => !menu.hidden;
export const closeMenu = () => post('choose', { place: [] });

function anchorOf(name) {
  if (name === 'broom') return document.getElementById('broom');
  if (name.startsWith('app-menu:')) return screen.querySelector(`[data-app-menu="${CSS.escape(name.slice(9))}"]`);
  if (name.startsWith('icon:')) return screen.querySelector(`[data-pid="${CSS.escape(name.slice(5))}"]`);
  const slash = name.indexOf('/');
  const surface = CSS.escape(name.slice('control:'.length, slash));
  return screen.querySelector(`[data-surface="${surface}"] [data-id="${CSS.escape(name.slice(slash + 1))}"]`);
}

/** Shows the menu below the element of that name. Without a name it hides the menu. */
export function showMenu(name) {
  const isOpen = Boolean(name) && menu.childElementCount > 0;
  const isNew = isOpen && (menu.hidden || name !== anchorName);
  if (isOpen && menu.hidden) cameFrom = document.activeElement;
  if (!isOpen) {
    hide();
    return;
  }
  mark(false);
  anchorName = name;
  menu.hidden = false;
  mark(true);
  place();
  showBranch();
  if (isNew) {
    openPlace = '';
    showBranch();
    items(menu.firstElementChild)[0]?.focus({ preventScroll: true });
  }
}

function hide() {
  if (menu.hidden) return;
  const hadFocus = menu.contains(document.activeElement) || document.activeElement === document.body;
  menu.hidden = true;
  openPlace = '';
  mark(false);
  // The menus at the top of the screen take no focus from the window that they are for.
  if (hadFocus) (isAppMenu() && cameFrom?.isConnected ? cameFrom : anchorOf(anchorName))?.focus({ preventScroll: true });
  anchorName = '';
}

const isAppMenu = () => anchorName.startsWith('app-menu:');
const openAppMenu = (title) => post('app-menu', { menu: Number(title.dataset.appMenu) });

/** Opens the menu beside the open one at the top of the screen. */
function turnAppMenu(by) {
  const titles = [...screen.querySelectorAll('[data-app-menu]')];
  const at = titles.indexOf(anchorOf(anchorName));
  openAppMenu(titles[(at + by + titles.length) % titles.length]);
}

screen.addEventListener('mousedown', (event) => {
  if (event.target.closest('[data-app-menu]')) event.preventDefault();  // the focus stays
});
screen.addEventListener('click', (event) => {
  const title = event.target.closest('[data-app-menu]');
  if (title) openAppMenu(title);
});
screen.addEventListener('pointerover', (event) => {
  const title = event.target.closest('[data-app-menu]');
  if (title && isAppMenu() && !menu.hidden && title !== anchorOf(anchorName)) openAppMenu(title);
});

function mark(isOpen) {
  if (anchorName) anchorOf(anchorName)?.classList.toggle('is-open', isOpen);
}

function place() {
  const anchor = anchorOf(anchorName)?.getBoundingClientRect();
  if (!anchor) return;
  const area = screen.getBoundingClientRect();
  menu.style.left = '0';  // measured at the left edge, where it has its full width
  menu.style.setProperty('--room', `${area.height - 42}px`);
  const left = Math.min(anchor.left - area.left, area.width - menu.offsetWidth - 8);
  const below = anchor.bottom - area.top + 5;
  const above = anchor.top - area.top - menu.offsetHeight - 4;
  const top = below + menu.offsetHeight > area.height - 6 && above > 36 ? above : below;
  menu.style.left = `${Math.max(8, left)}px`;
  menu.style.top = `${top}px`;
  menu.style.setProperty('--room', `${area.height - top - 12}px`);
  menu.classList.toggle('to-right', left < 360);
}

const items = (list) => list
  ? [...list.querySelectorAll(':scope > .menu-item, :scope > .menu-branch > .menu-item')]
      .filter((item) => item.ariaDisabled !== 'true')
  : [];

function showBranch() {
  for (const branch of menu.querySelectorAll('.menu-branch')) {
    const place = branch.firstElementChild.dataset.place;
    const isOpen = openPlace === place || openPlace.startsWith(`${place}.`);
    branch.toggleAttribute('data-open', isOpen);
    branch.firstElementChild.ariaExpanded = String(isOpen);
    if (isOpen) keepInSight(branch.lastElementChild);
  }
}

/** Moves a submenu over its own menu if there is no room beside it. */
function keepInSight(list) {
  list.style.translate = '';
  const area = screen.getBoundingClientRect();
  const box = list.getBoundingClientRect();
  const x = Math.max(area.left + 8 - box.left, Math.min(0, area.right - 8 - box.right));
  const y = Math.min(0, area.bottom - 8 - box.bottom);
  list.style.translate = `${x}px ${y}px`;
}

function openBranch(item) {
  openPlace = item.dataset.place;
  showBranch();
}

function choose(item) {
  if (!item || item.ariaDisabled === 'true') return;
  if (item.classList.contains('opens')) {
    openBranch(item);
    items(item.nextElementSibling)[0]?.focus();
    return;
  }
  post('choose', { place: item.dataset.place.split('.').map(Number) });
}

menu.addEventListener('click', (event) => choose(event.target.closest('.menu-item')));

menu.addEventListener('pointermove', (event) => {
  const item = event.target.closest('.menu-item');
  if (!item || item.ariaDisabled === 'true') return;
  if (item !== document.activeElement) item.focus({ preventScroll: true });
  openPlace = item.classList.contains('opens')
    ? item.dataset.place
    : item.dataset.place.split('.').slice(0, -1).join('.');
  showBranch();
});

function byLetter(all, key) {
  const now = performance.now();
  typed = now - typedAt < 800 ? typed + key.toLowerCase() : key.toLowerCase();
  typedAt = now;
  all.find((item) => item.ariaLabel.toLowerCase().startsWith(typed))?.focus();
}

menu.addEventListener('keydown', (event) => {
  const item = document.activeElement.closest('.menu-item');
  const all = items(item?.closest('.menu-list') ?? menu.firstElementChild);
  const at = all.indexOf(item);
  const branch = item?.closest('.menu-list').parentElement.closest('.menu-branch');
  event.stopPropagation();
  switch (event.key) {
    case 'ArrowDown': all[(at + 1) % all.length]?.focus(); break;
    case 'ArrowUp': all.at(at < 1 ? -1 : at - 1)?.focus(); break;
    case 'Home': all[0]?.focus(); break;
    case 'End': all.at(-1)?.focus(); break;
    case 'ArrowRight':
      if (item?.classList.contains('opens')) choose(item);
      else if (isAppMenu()) turnAppMenu(1);
      break;
    case 'ArrowLeft':
      if (branch) {
        openPlace = '';
        showBranch();
        branch.firstElementChild.focus();
      } else if (isAppMenu()) turnAppMenu(-1);
      break;
    case 'Enter':
    case ' ': choose(item); break;
    case 'Tab':
    case 'Escape': closeMenu(); break;
    default:
      if (event.key.length === 1 && !event.ctrlKey && !event.metaKey) byLetter(all, event.key);
      return;
  }
  event.preventDefault();
});
