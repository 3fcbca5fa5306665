// The page's link to the program: what it posts, and what it is told.

const token = document.querySelector('meta[name="velko-token"]').content;
let last = Promise.resolve();

/** Shows a line for a while, and to screen readers. */
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
    return false;
  }
}

/** Asks for something to be done, after everything that was asked for before. Whether it was. */
export function post(action, body = {}) {
  last = last.then(() => send(action, body));
  return last;
}

/** Calls `receive` with each message. */
export function listen(receive) {
  const ended = document.getElementById('ended');
  const source = new EventSource(`/events?token=${token}`);
  source.onopen = () => { ended.hidden = true; };
  source.onmessage = (event) => receive(JSON.parse(event.data));
  source.onerror = () => {
    ended.textContent = source.readyState === EventSource.CLOSED
      ? 'This page is not fed: the playground was started anew, or too many pages are open. Load it again.'
      : 'The playground has ended. Start it with ./run; a new page will open.';
    ended.hidden = false;
  };
}
