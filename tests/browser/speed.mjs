import assert from 'node:assert/strict';
import { onMac } from './mac.mjs';

const clicks = 31;
const limit = 50;  // ms
const press = 90;  // ms from a press to what it does, on the simulated Mac as on a real one

/** Makes the page measure, for each click, how long the menu bar (without its clock) and its icons take to change. */
function watchClicks() {
  let clickedAt = 0;
  const times = { broom: [], icons: [] };
  globalThis.reactions = times;
  addEventListener('click', (event) => { clickedAt = event.timeStamp; }, true);
  new MutationObserver((changes) => {
    const passed = performance.now() - clickedAt;
    const isNew = times.broom.length === times.icons.length;
    const ofIcons = changes.some(({ type, target }) => type === 'childList' && target.id === 'bar');
    const ofBroom = ofIcons || changes.some(({ target }) => !target.closest('[data-clock]'));
    if (clickedAt === 0) return;
    if (isNew && ofBroom) times.broom.push(passed);
    if (ofIcons) times.icons.push(passed);
    if (ofIcons) clickedAt = 0;
  }).observe(document.getElementById('bar'), { childList: true, subtree: true, attributes: true });
}

/** Measures how long a change without Velko, the badge of an icon, takes until it is drawn, sent and shown. */
function badgeShows(text) {
  const token = document.querySelector('meta[name="velko-token"]').content;
  const headers = { 'Content-Type': 'application/json', 'X-Velko-Token': token };
  const begun = performance.now();
  return new Promise((done) => {
    const observer = new MutationObserver(() => {
      if (![...document.querySelectorAll('.status-badge')].some((badge) => badge.textContent === text)) return;
      observer.disconnect();
      done(performance.now() - begun);
    });
    observer.observe(document.getElementById('bar'), { childList: true, subtree: true, characterData: true });
    fetch('/desk', { method: 'POST', headers, body: JSON.stringify({ line: `icon badge Slack "${text}"` }) });
  });
}

/** The times of the broom, the icons and the badges, each sorted. */
async function reactionsTo(mac) {
  const badges = [];
  await mac.page.evaluate(watchClicks);
  for (let click = 1; click <= clicks; click += 1) {
    await mac.broom.click();
    await mac.page.waitForFunction((count) => globalThis.reactions.icons.length === count, click);
    badges.push(await mac.page.evaluate(badgeShows, String(click)));
  }
  const { broom, icons } = await mac.page.evaluate(() => globalThis.reactions);
  return [broom, icons, badges].map((each) => each.sort((one, other) => one - other));
}

onMac('A click shows at once, also among a hundred apps', {}, async (mac) => {
  for (const apps of [30, 100]) {
    if (apps === 100) {
      await mac.play('set ask off');
      await mac.play('set shelf-when-full off');  // they come and go in the bar, though not all have room
      await mac.desk.getByRole('button', { name: 'A hundred apps' }).click();
    }
    await mac.page.waitForFunction((count) => document.querySelectorAll('[data-running]').length === count, apps);
    const [broom, icons, badges] = await reactionsTo(mac);
    const inWords = (times) => `${times[clicks >> 1].toFixed(1)} ms (at worst ${times.at(-1).toFixed(1)} ms)`;
    console.log(`${apps} apps, ${clicks} clicks: the broom answers after ${inWords(broom)}, the icons after ${inWords(icons)}, a badge after ${inWords(badges)}`);
    // On a busy machine all changes are late. So only the time beyond that counts.
    const third = Math.floor(clicks / 3);
    assert.ok(broom[third] - press < limit + 4 * badges[third], `${broom[third]} ms, a badge ${badges[third]} ms`);
  }
});
