// The page's connection to the program: what the page posts, and what the program sends.

const token = document.querySelector('meta[name="velko-token"]').content;
let last = Promise.resolve();

/** Shows a line for a few seconds. Screen readers say it. */
export function tell(line) {
  const toast = document.getElementById('toast');
  toast.textContent = line;
  toast.hidden = false;
  clearTimeout(tell.timer);
  tell.timer = setTimeout(() => { toast.hidden = true; }, 5000);
}

async function send(action, body) {
  try {
    const response = await fetch(`/${action}`, {
      method: 'POST',
      headers: { 'Content-Type': 'application/json', 'X-Velko-Token': token },
      body: JSON.stringify(body),
    });
    if (response.status !== 204) tell((await response.text()).trim());
    return response.status === 204;
  } catch {
    tell('The playground does not answer.');
    return false;
  }
}

/** Asks the program to do something, after everything that was asked before. Resolves to whether it was done. */
export function post(action, body = {}) {
  last = last.then(() => send(action, body));
  return last;
}

const underWay = new WeakMap();  // how many changes of a control have no answer yet
const partOf = (control) => control.closest('[data-id]') ?? control;

/** Whether the user has just changed a control and the program has not answered yet. */
export const isUnderWay = (control) => underWay.get(partOf(control)) > 0;

/** Leaves a control as the user has set it until the program answers. Then `showAgain` shows what the program says. */
export async function whileUnderWay(control, change, showAgain) {
  const part = partOf(control);
  underWay.set(part, (underWay.get(part) ?? 0) + 1);
  // The new state of the control may arrive a little later than the answer.
  if (await change) await new Promise((done) => { setTimeout(done, 300); });
  underWay.set(part, underWay.get(part) - 1);
  if (!isUnderWay(control)) showAgain();
}

function openStream(receive) {
  const ended = document.getElementById('ended');
  const source = new EventSource(`/events?token=${token}`);
  source.onopen = () => { ended.hidden = true; };
  source.onmessage = (event) => receive(JSON.parse(event.data));
  source.onerror = () => {
    ended.textContent = source.readyState === EventSource.CLOSED
      ? 'This page is not fed: too many pages are open, or the playground was started anew. Open the address that ./run has printed.'
      : 'The playground has ended. Start it with ./run; a new page will open.';
    ended.hidden = false;
  };
  return source;
}

/** Calls `receive` with each message while the page is visible. */
export function listen(receive) {
  let source = null;
  // A browser has few connections for all pages of one server. So a hidden page gives its connection up.
  const follow = () => {
    source?.close();
    source = document.hidden ? null : openStream(receive);
  };
  document.addEventListener('visibilitychange', follow);
  follow();
}
