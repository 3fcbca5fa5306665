import assert from 'node:assert/strict';
import { onMac } from './mac.mjs';

const rows = (mac) => mac.surface('search').locator('[data-row]');
const labels = async (mac) => Promise.all((await rows(mac).all()).map((row) => row.getAttribute('aria-label')));

async function openSearch(mac) {
  await mac.happens('press keys control+option+m');
  await mac.surface('search').waitFor();
  await mac.page.getByRole('searchbox', { name: 'Search the menu bar' }).waitFor();
}

onMac('The search opens the menu of whatever is typed', {}, async (mac) => {
  const { page } = mac;
  await mac.happens('set key search control+option+m');
  await openSearch(mac);
  await mac.checkAccess('the search');
  await mac.picture('the search');
  assert.equal(await rows(mac).count(), 30, 'every app, whatever its section');
  await page.keyboard.type('gd');
  await page.waitForFunction(() => document.querySelectorAll('[data-surface="search"] [data-row]').length === 1);
  assert.deepEqual(await labels(mac), ['Google Drive, Tucked']);
  await page.keyboard.press('Enter');
  await mac.logs('open com.google.drivefs: press ok');
  await mac.surface('search').waitFor({ state: 'hidden' });
  await mac.happens('menu close');

  await openSearch(mac);
  await page.keyboard.type('do');
  await rows(mac).filter({ hasText: 'Docker' }).waitFor();
  await page.keyboard.press('ArrowDown');
  await page.keyboard.press('ArrowUp');
  const first = await rows(mac).first().getAttribute('data-row');
  await page.waitForFunction((row) => document.querySelector('[data-surface="search"] [aria-selected="true"]')?.dataset.row === row, first);
  await mac.happens('hang Docker');
  await page.keyboard.press('Control+a');
  await page.keyboard.type('docker');
  await page.waitForFunction(() => document.querySelectorAll('[data-surface="search"] [data-row]').length === 1);
  await page.keyboard.press('Enter');
  await mac.surface('search').getByText("Docker isn't answering").waitFor();
  await mac.picture('an app that does not answer');
  await mac.checkAccess('an app that does not answer');
  await page.keyboard.press('Escape');
  await mac.surface('search').waitFor({ state: 'hidden' });

  await openSearch(mac);
  await page.keyboard.type('slack');
  await page.waitForFunction(() => document.querySelectorAll('[data-surface="search"] [data-row]').length === 1);
  await page.keyboard.press('Meta+Enter');
  await mac.surface('settings').waitFor();
});

onMac('Keys are recorded, refused in words and cleared', {}, async (mac) => {
  const { page } = mac;
  await mac.openSettings('Keys');
  const search = mac.control('key:search');
  const record = async (keys) => {
    await search.click();
    await search.getByText('Press the Keys…').waitFor();  // a key that comes earlier is for the page
    await page.keyboard.press(keys);
  };
  await search.click();
  await search.getByText('Press the Keys…').waitFor();
  await mac.picture('a key is recorded');
  await page.keyboard.press('Control+Alt+m');
  await search.getByText('⌃⌥M').waitFor();
  await mac.logs('search: ⌃⌥M');
  assert.deepEqual((await mac.playground.layout()).hotKeys.search, { key: 46, modifiers: ['control', 'option'] });

  const toggle = mac.control('key:toggle');
  await toggle.focus();
  await page.keyboard.press('Enter');  // a button as any other
  await toggle.getByText('Press the Keys…').waitFor();
  await page.keyboard.press('Control+Alt+m');
  await mac.text('⌃⌥M is already the key for “Search the menu bar”.').waitFor();
  await mac.checkAccess('the page Keys');
  await mac.picture('the keys');
  await record('Escape');
  await search.getByText('⌃⌥M').waitFor();
  await mac.surface('settings').waitFor();  // Escape was for the key alone
  await record('Backspace');
  await search.getByText('Choose a Key…').waitFor();
  await mac.control('search-in-menu').getByRole('switch').check();
  await mac.closeSettings();
  await mac.openMenu();
  await mac.entry('Open').hover();
  await mac.entry('Search…').click();
  await mac.surface('search').waitFor();
});
