// Lists of rows, which the user selects, and the search fields beside them.

import { post, whileUnderWay } from '/link.js';
import { showControls } from '/morph.js';

const screen = document.getElementById('screen');
const anchors = new WeakMap();  // per list: the row where a selection over several rows begins

const listOf = (element) => element.closest?.('.list');
const rowsOf = (list) => [...list.querySelectorAll(':scope > [data-row]')];
const chosenRows = new WeakMap();  // per list: what the user has selected and the program has not confirmed yet
const isSelected = (row) => chosenRows.get(listOf(row))?.has(row.dataset.row) ?? row.ariaSelected === 'true';
const isUsable = (list) => list.ariaDisabled !== 'true';

function bodyOf(element) {
  const node = element.closest('[data-id]');
  return { surface: element.closest('.surface').dataset.surface, id: node.dataset.id };
}

function select(list, rows) {
  for (const row of rowsOf(list)) row.ariaSelected = String(rows.includes(row));
  rows.at(-1)?.scrollIntoView({ block: 'nearest' });
  const ids = rows.map((row) => row.dataset.row);
  chosenRows.set(list, new Set(ids));
  whileUnderWay(list, post('act', { ...bodyOf(list), rows: ids }), () => chosenRows.delete(list));
}

function selectOne(list, row) {
  if (!row) return;
  anchors.set(list, row.dataset.row);
  select(list, [row]);
}

/** Selects from the row where the selection began to this one. */
function selectTo(list, row) {
  const rows = rowsOf(list);
  const begin = rows.findIndex((each) => each.dataset.row === anchors.get(list));
  const [first, last] = [Math.max(0, begin), rows.indexOf(row)].sort((a, b) => a - b);
  const between = rows.slice(first, last + 1);
  select(list, first === rows.indexOf(row) ? between.reverse() : between);
}

function toggle(list, row) {
  anchors.set(list, row.dataset.row);
  const rows = rowsOf(list).filter(isSelected);
  select(list, isSelected(row) ? rows.filter((each) => each !== row) : [...rows, row]);
}

const activate = (list, row) =>
  'activates' in list.dataset && post('act', { ...bodyOf(list), row: row.dataset.row });
const openMenu = (list, row) =>
  'menu' in list.dataset && post('menu', { ...bodyOf(list), row: row?.dataset.row ?? '' });

/** The row that a press is for. A control in a row takes its presses itself. */
function rowUnder({ target }) {
  const list = listOf(target);
  if (!list || !isUsable(list) || target.closest('button, input, select, label')) return {};
  return { list, row: target.closest('[data-row]') };
}

screen.addEventListener('click', (event) => {
  const { list, row } = rowUnder(event);
  if (!list) return;
  const isSeveral = list.ariaMultiSelectable === 'true';
  if (!row) select(list, []);
  else if (isSeveral && event.shiftKey) selectTo(list, row);
  else if (isSeveral && (event.metaKey || event.ctrlKey)) toggle(list, row);
  else selectOne(list, row);
});

screen.addEventListener('dblclick', (event) => {
  const { list, row } = rowUnder(event);
  if (row) activate(list, row);
});

screen.addEventListener('contextmenu', (event) => {
  const list = listOf(event.target);
  const row = event.target.closest('[data-row]');
  if (!list || !row || !isUsable(list)) return;
  event.preventDefault();
  openMenu(list, row);
});

let typed = '';
let typedAt = 0;

/** Selects the next row whose name begins with what is typed. */
function find(list, key) {
  const now = performance.now();
  const isNew = now - typedAt > 1000;
  typed = isNew ? key : typed + key;
  typedAt = now;
  const rows = rowsOf(list);
  const start = rows.findIndex(isSelected) + (isNew ? 1 : 0);
  const begins = (row) =>
    row.ariaLabel.slice(0, typed.length).localeCompare(typed, undefined, { sensitivity: 'base' }) === 0;
  selectOne(list, [...rows.slice(Math.max(0, start)), ...rows].find(begins));
}

/** Moves to the row before or after the end of the selection. */
function move(list, by, isLonger) {
  const rows = rowsOf(list);
  const chosen = rows.filter(isSelected);
  const end = rows.indexOf(by < 0 ? chosen[0] : chosen.at(-1));
  const from = isLonger && list.ariaMultiSelectable === 'true' ? moveEnd(list, rows, chosen, by) : end;
  const row = end < 0 ? rows.at(by < 0 ? -1 : 0) : rows[Math.max(0, Math.min(rows.length - 1, from + by))];
  if (!row) return;
  if (isLonger && list.ariaMultiSelectable === 'true') selectTo(list, row);
  else selectOne(list, row);
}

/** The end of the selection that moves: the one where the selection has not begun. */
function moveEnd(list, rows, chosen, by) {
  const isAtFirst = chosen[0]?.dataset.row === anchors.get(list);
  const isAtLast = chosen.at(-1)?.dataset.row === anchors.get(list);
  if (isAtFirst && isAtLast) return rows.indexOf(chosen[0]);
  if (!isAtFirst && !isAtLast) return rows.indexOf(by < 0 ? chosen[0] : chosen.at(-1));
  return rows.indexOf(isAtFirst ? chosen.at(-1) : chosen[0]);
}

function pressed(list, event) {
  const rows = rowsOf(list);
  const chosen = rows.filter(isSelected);
  const isCommand = event.metaKey || event.ctrlKey;
  if (event.key === 'ArrowUp' || event.key === 'ArrowDown') move(list, event.key === 'ArrowUp' ? -1 : 1, event.shiftKey);
  else if (event.key === 'Home') selectOne(list, rows[0]);
  else if (event.key === 'End') selectOne(list, rows.at(-1));
  else if (event.key === 'Enter' && chosen.length === 1 && 'activates' in list.dataset) activate(list, chosen[0]);
  else if (event.key === 'ContextMenu' || (event.key === 'F10' && event.shiftKey)) openMenu(list, null);
  else if (isCommand && event.key === 'a' && list.ariaMultiSelectable === 'true') select(list, rows);
  else if (!isCommand && !event.altKey && event.key.length === 1 && event.key !== ' ') find(list, event.key);
  else return false;
  return true;
}

const fieldKeys = ['ArrowUp', 'ArrowDown', 'Enter', 'Escape'];
const isNumbered = (event) => (event.metaKey || event.altKey) && /^[1-9]$/.test(event.key);

/** Gives the program the keys of a field that are for no text. While an input method is at work, they are for that. */
/** Whether Down leads from the field to the tiles below it, as it works no list. */
const leadsToTiles = (field) => !field.hasAttribute('aria-controls') && field.closest('.surface').querySelector('.tile:enabled');

function pressedInField(field, event) {
  if (event.key === 'ArrowDown' && leadsToTiles(field)) return false;
  if (!(fieldKeys.includes(event.key) || isNumbered(event)) || event.isComposing) return false;
  const { key, shiftKey, ctrlKey, altKey, metaKey } = event;
  post('field', { ...bodyOf(field), key, shift: shiftKey, control: ctrlKey, option: altKey, command: metaKey });
  return true;
}

screen.addEventListener('keydown', (event) => {
  const { target } = event;
  const isUsed = target.matches('.list')
    ? isUsable(target) && pressed(target, event)
    : target.matches('input[type="search"]') && pressedInField(target, event);
  if (isUsed) event.preventDefault();
});

screen.addEventListener('input', ({ target }) => {
  if (!target.matches('input[type="search"]')) return;
  const change = post('act', { ...bodyOf(target), value: target.value });
  whileUnderWay(target, change, () => showControls(target.closest('[data-id]')));
});

const shownRows = new WeakMap();  // per list: the selected row that was in sight last

/** Brings a row into sight that the program has selected. */
function followSelections() {
  for (const list of screen.querySelectorAll('.list')) {
    const row = list.getAttribute('aria-activedescendant');
    if (row && row !== shownRows.get(list)) document.getElementById(row)?.scrollIntoView({ block: 'nearest' });
    shownRows.set(list, row);
  }
}

/** Lets a screen reader follow the selected row while the keyboard is in the field that works the list. */
export function showDrivenRows() {
  followSelections();
  for (const field of screen.querySelectorAll('input[type="search"][aria-controls]')) {
    const list = document.getElementById(field.getAttribute('aria-controls'));
    const row = list?.getAttribute('aria-activedescendant');
    if (row) field.setAttribute('aria-activedescendant', row);
    else field.removeAttribute('aria-activedescendant');
  }
}
