// Changes a part of the page in place. An element whose key and kind are the same stays, so that it keeps its focus,
// scroll position and open menus.

import { isUnderWay } from '/link.js';

const isElement = (node) => node.nodeType === Node.ELEMENT_NODE;

function keyOf(node) {
  if (!isElement(node)) return '';
  const { key, id, kind } = node.dataset ?? {};
  const name = node.id || key || (id && `${kind}:${id}`);
  return name ? `${node.nodeName} ${name}` : '';
}

function isAlike(old, fresh) {
  return old.nodeName === fresh.nodeName && !keyOf(old) && old.dataset?.kind === fresh.dataset?.kind;
}

function matchAttributes(old, fresh) {
  for (const { name } of [...old.attributes]) {
    if (!fresh.hasAttribute(name)) old.removeAttribute(name);
  }
  for (const { name, value } of fresh.attributes) {
    if (old.getAttribute(name) !== value) old.setAttribute(name, value);
  }
}

/** Once a user has touched a control, its attributes no longer say what it shows. So set its properties. */
function matchControl(old, fresh) {
  if (isUnderWay(old)) return;
  if (old instanceof HTMLInputElement) {
    if (old.type === 'search') {
      const text = fresh.getAttribute('value') ?? '';
      if (old.value !== text) old.value = text;
    } else {
      old.checked = fresh.hasAttribute('checked');
    }
  } else if (old instanceof HTMLSelectElement) {
    const chosen = [...fresh.options].findIndex((option) => option.hasAttribute('selected'));
    if (old.selectedIndex !== chosen) old.selectedIndex = chosen;
  }
}

/** Makes the controls within a node show what the program last said. */
export function showControls(node) {
  for (const control of node.querySelectorAll('input, select')) matchControl(control, control);
}

function matchNode(old, fresh) {
  if (!isElement(old)) {
    if (old.nodeValue !== fresh.nodeValue) old.nodeValue = fresh.nodeValue;
    return;
  }
  matchAttributes(old, fresh);
  if (fresh.hasAttribute('data-clock') || fresh.hasAttribute('data-mine')) return;
  matchChildren(old, fresh);
  matchControl(old, fresh);
}

function matchChildren(old, fresh) {
  const wanted = new Set([...fresh.childNodes].map(keyOf).filter(Boolean));
  const kept = new Map();
  for (const child of [...old.childNodes]) {
    const key = keyOf(child);
    if (!key) continue;
    if (wanted.has(key)) kept.set(key, child);
    else child.remove();
  }
  const put = (old.moveBefore ?? old.insertBefore).bind(old);
  let place = old.firstChild;
  for (const next of [...fresh.childNodes]) {
    const key = keyOf(next);
    const match = key ? kept.get(key) : place && isAlike(place, next) ? place : null;
    if (!match) {
      old.insertBefore(next, place);
    } else {
      if (match === place) place = place.nextSibling;
      else put(match, place);
      matchNode(match, next);
      kept.delete(key);
    }
  }
  while (place) {
    const next = place.nextSibling;
    place.remove();
    place = next;
  }
}

/** Changes the content of `target` into that of the markup. */
export function morph(target, markup) {
  const template = document.createElement('template');
  template.innerHTML = markup;
  const focused = document.activeElement;
  const hadFocus = target.contains(focused);
  matchChildren(target, template.content);
  if (!hadFocus || focused === document.activeElement) return;
  // The focused element was moved or removed. Give the focus back to it, or to the part of the page it was in.
  const next = focused.isConnected ? focused : target.closest('[tabindex]');
  next?.focus({ preventScroll: true });
}
