// The windows on the Mac's screen: their order, and where the user has dragged them.

const screen = document.getElementById('screen');
const windows = [...screen.querySelectorAll('.window')];  // the front window is the last
const lowest = 30;  // z-index of the rearmost window; panels and menus are above all windows

/** The open windows, the front one first. */
export const openWindows = () => windows.filter((each) => !each.hidden).reverse();

/** Brings a window to the front. */
export function bringToFront(window) {
  const at = windows.indexOf(window);
  if (at < 0) return;
  windows.push(...windows.splice(at, 1));
  windows.forEach((each, index) => { each.style.zIndex = lowest + index; });
}

const room = 8;  // between a window and the edges of the screen

/** Where a window's top edge goes: it stays where it is while the window's height changes, unless its bottom would leave
    the screen. A window that opens is in the middle, or a little above it. */
function placeTop(window, isNew) {
  const barHeight = screen.querySelector('.menu-bar').offsetHeight;
  const free = screen.clientHeight - barHeight - window.offsetHeight;
  const top = isNew ? barHeight + 0.42 * free : parseFloat(window.style.top);
  window.style.top = `${Math.round(Math.max(barHeight + room, Math.min(top, barHeight + free - room)))}px`;
}

/** Shows or hides a window. A window that opens comes to the front, at its first place. */
export function showWindow(window, isOpen) {
  if (isOpen === !window.hidden) return;
  window.hidden = !isOpen;
  if (!isOpen) return;
  window.style.translate = '';
  delete window.dataset.moved;
  placeTop(window, true);
  bringToFront(window);
}

const between = (least, value, most) => Math.max(least, Math.min(value, most));

/** Moves a window to x and y from its first place, but keeps its title bar within the screen. */
function moveTo(window, x, y) {
  const [oldX, oldY] = offsetOf(window);
  const area = screen.getBoundingClientRect();
  const bar = window.querySelector('.title-bar').getBoundingClientRect();
  const top = area.top + screen.querySelector('.menu-bar').offsetHeight;
  const toX = oldX + between(area.left - bar.left, x - oldX, area.right - bar.right);
  const toY = oldY + between(top - bar.top, y - oldY, area.bottom - bar.bottom);
  window.dataset.moved = `${toX} ${toY}`;
  window.style.translate = `calc(-50% + ${toX}px) ${toY}px`;
}

const offsetOf = (window) => (window.dataset.moved ?? '0 0').split(' ').map(Number);

/** Must be called when the size of the windows or of the screen has changed. */
export function keepWindowsInReach() {
  for (const window of openWindows()) {
    if (window.dataset.moved) moveTo(window, ...offsetOf(window));
    else placeTop(window, false);
  }
}

screen.addEventListener('pointerdown', (event) => {
  const window = event.target.closest('.window');
  if (window) bringToFront(window);
  const bar = event.target.closest('.title-bar');
  if (!bar || event.button !== 0 || event.target.closest('button')) return;
  const [x, y] = offsetOf(window);
  const drag = (now) => moveTo(window, x + now.clientX - event.clientX, y + now.clientY - event.clientY);
  bar.setPointerCapture(event.pointerId);
  bar.addEventListener('pointermove', drag);
  bar.addEventListener('lostpointercapture', () => bar.removeEventListener('pointermove', drag), { once: true });
});

// A window that gets the focus comes to the front.
screen.addEventListener('focusin', (event) => bringToFront(event.target.closest('.window')));
