// Every surface with no, one, a dozen and sixty apps, one of which has a name of sixty letters. What is on it fits, people
// can use it, and there are pictures of it in light and dark colours and with more contrast.

import assert from 'node:assert/strict';
import { onMac } from './mac.mjs';
import { sorted } from './playground.mjs';

const samples = [...sorted.tucked, ...sorted.bar, ...sorted.buried];
const oddNames = ['com.example.Überwachungskamerasteuerungszentrale der Hausverwaltung Nord', 'com.example.שלום-עולם', 'com.example.app10', 'com.example.app2'];
const looks = { 0: { colorScheme: 'dark' }, 1: {}, 12: { contrast: 'more' }, 60: { colorScheme: 'dark', contrast: 'more' } };

/** Lets so many apps run, the odd names among them. */
async function launch(mac, count) {
  await mac.shows(sorted.bar);
  const kept = Math.max(0, count - oddNames.length);
  for (const app of samples.slice(kept)) await mac.happens(`quit ${app}`);
  for (const app of count > 0 ? oddNames.slice(0, count) : []) await mac.happens(`launch "${app}"`);
  for (let more = samples.length; more < kept; more += 1) await mac.happens(`launch com.example.helper${more}`);
  await mac.happens('wait 12 s');
}

/** What is not wholly within its surface, unless it scrolls there. */
function cutOff(surface) {
  return surface.evaluate((root) => {
    const frame = root.getBoundingClientRect();
    const scrolls = (element) => element.scrollHeight > element.clientHeight + 1
      && ['auto', 'scroll'].includes(getComputedStyle(element).overflowY);
    const isFree = (element) => scrolls(element) || (element !== root && isFree(element.parentElement));
    return [...root.querySelectorAll('[data-id]')].filter((element) => {
      const { left, right, bottom, width } = element.getBoundingClientRect();
      const isWide = left < frame.left - 1 || right > frame.right + 1;
      return width > 0 && (isWide || (bottom > frame.bottom + 1 && !isFree(element)));
    }).map((element) => element.dataset.id);
  });
}

async function check(mac, name, surface, { size, look }) {
  await surface.waitFor();
  assert.deepEqual(await cutOff(surface), [], `${name} with ${size} apps holds everything`);
  await mac.picture(`${name} ${size}${look.colorScheme === 'dark' ? ' dark' : ''}${look.contrast ? ' contrast' : ''}`);
}

for (const [size, look] of Object.entries(looks)) {
  onMac(`Every surface holds ${size} apps`, { viewport: { width: 1440, height: 1080 }, ...look }, async (mac) => {
    const view = (name, surface) => check(mac, name, surface, { size, look });
    await launch(mac, Number(size));
    if (size > 0) {
      await mac.broom.click();
      await view('note', mac.surface('note'));
      await mac.press('Escape');
    }
    await mac.happens('set other-style shelf');
    await mac.happens('set search-in-menu on');
    await mac.happens('set presenting on');
    await mac.happens('wait 2 s');  // a click that closes the note does nothing else
    if (size > 0) {
      for (const app of oddNames.slice(0, size)) await mac.happens(`place "${app}" tucked`);
      await mac.broom.click();
      await view('shelf', mac.surface('shelf'));
      await mac.checkAccess(`the shelf with ${size} apps`);
      await mac.press('Escape');
    }
    await mac.openMenu();
    await mac.entry('Open').hover();
    await view('menu', mac.menu);
    await mac.entry('Search…').click();
    await view('search', mac.surface('search'));
    await mac.press('Escape');
    for (const page of ['Menu Bar', 'General', 'Keys', 'Presenting', 'About']) {
      await mac.openSettings(page);
      await view(`settings ${page}`, mac.surface('settings').locator('.surface-content'));
      await mac.closeSettings();
    }
  });
}

for (const colorScheme of ['light', 'dark']) {
  onMac(`The setup in ${colorScheme} colours`, { isSetUp: false, colorScheme }, async (mac) => {
    const view = (name) => check(mac, `setup ${name}`, mac.surface('setup'), { size: 30, look: { colorScheme } });
    await view('welcome');
    await mac.page.getByRole('button', { name: "Let's Tidy" }).click();
    await mac.control('permission:open').waitFor();
    await view('permission');
    await mac.desk.getByLabel('Accessibility permission').check();
    await mac.control('permission:go').click();
    await mac.text('1 of 30').waitFor();
    await view('card');
    await mac.control('sort:rest').click();
    await view('summary');
    await mac.control('summary:apply').click();
    await mac.control('done:close').waitFor();
    await view('done');
  });
}
