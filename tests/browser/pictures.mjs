// Makes the pictures in docs/pictures: node tests/browser/pictures.mjs. The font Inter must be installed.

import { writeFile } from 'node:fs/promises';
import { join } from 'node:path';
import { flags, onMac } from './mac.mjs';
import { root, sorted } from './playground.mjs';

// Only with these options does the browser place text at half points.
flags.push('--force-device-scale-factor=2');

const look = { viewport: { width: 1260, height: 1040 } };
const low = { ...look, viewport: { width: 1260, height: 900 } };
const dark = { ...look, colorScheme: 'dark' };

/** The clock stands still, so that the same page gives the same picture. */
function stopClock() {
  Object.defineProperty(Intl.DateTimeFormat.prototype, 'format', { value: () => 'Mon 2 Mar 09:41' });
}

function picture(name, options, arrange) {
  onMac(`picture of ${name}`, options, async (mac) => {
    const { page } = mac;
    const session = await mac.context.newCDPSession(page);
    await session.send('Emulation.setDeviceMetricsOverride', { ...page.viewportSize(), deviceScaleFactor: 0, mobile: false });
    await page.addInitScript(stopClock);
    await mac.load();
    const { left = 0, height, whole } = await arrange(mac);
    await page.mouse.move(5, 5);
    await page.evaluate(() => document.fonts.ready);
    const screen = await page.locator('#screen').boundingBox();
    const part = { x: screen.x + left, y: screen.y, width: screen.width - left, height: height ?? screen.height };
    const clip = whole ? { x: 0, y: 0, ...page.viewportSize() } : part;
    const { data } = await session.send('Page.captureScreenshot', { format: 'webp', quality: 86, clip: { ...clip, scale: 1 } });
    await writeFile(join(root, 'docs/pictures', `${name}.webp`), data, 'base64');
  });
}

async function withNote(mac) {
  await mac.shows(sorted.bar);
  await mac.desk.getByRole('button', { name: 'A newcomer' }).click();
  await mac.page.locator('#apps .chip.accent').waitFor({ state: 'attached' });
  await mac.broom.click();
  await mac.text('Linear just moved in').waitFor();
  return { height: 250 };
}

async function withMenu(mac) {
  await mac.shows(sorted.bar);
  await mac.openMenu();
  await mac.press('ArrowRight');
  await mac.entry('Spotify').waitFor();
  return { left: 340 };
}

picture('note', look, withNote);
picture('note-dark', dark, withNote);
picture('menu-dark', dark, withMenu);

picture('shelf', { ...look, viewport: { width: 1440, height: 900 } }, async (mac) => {
  await mac.desk.getByLabel('Notch').check();
  await mac.broom.click();
  await mac.surface('shelf').getByRole('button', { name: 'Spotify' }).waitFor();
  return { left: 330, height: 376 };
});

picture('settings', look, async (mac) => {
  await mac.openSettings();
  return {};
});

picture('setup', { ...low, isSetUp: false }, async (mac) => {
  await mac.page.getByRole('button', { name: "Let's Tidy" }).click();
  await mac.control('permission:open').waitFor();
  await mac.desk.getByLabel('Accessibility permission').check();
  await mac.control('permission:go').click();
  await mac.text('1 of 30').waitFor();
  return {};
});

picture('playground', { ...look, viewport: { width: 1440, height: 900 } }, async (mac) => {
  await withNote(mac);
  return { whole: true };
});

picture('narrow', { ...dark, viewport: { width: 390, height: 700 } }, async (mac) => {
  await mac.openSettings('General');
  return { whole: true };
});
