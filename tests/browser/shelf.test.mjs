import assert from 'node:assert/strict';
import { onMac } from './mac.mjs';

const notched = async (mac) => {
  await mac.happens('set auto-tuck 0');  // looking for faults takes longer than the shelf stays
  await mac.happens('displays laptop');
  await mac.broom.click();
  await mac.surface('shelf').waitFor();
};

onMac('The shelf is used without a mouse', { reducedMotion: 'no-preference' }, async (mac) => {
  const { page } = mac;
  const shelf = mac.surface('shelf');
  const tiles = shelf.locator('.tile');
  await notched(mac);
  const count = await tiles.count();
  assert.ok(count > 8, 'there are more apps than one row holds');
  await mac.checkAccess('the shelf');
  await mac.focuses('find');
  await page.keyboard.type('drive');
  await page.waitForFunction(() => document.querySelectorAll('.shelf .tile').length === 2);
  await mac.checkAccess('the shelf after some letters');
  await mac.picture('the shelf after some letters');
  await mac.press('ArrowDown', 'ArrowRight', 'ArrowLeft');
  await mac.focuses('tile:com.microsoft.OneDrive');
  assert.ok(await mac.focusIsSeen());
  await mac.press('Control+3');
  await mac.logs('com.microsoft.OneDrive -> buried');
  await mac.tabTo(mac.control('pin'));
  await mac.press('Enter');
  await page.getByRole('button', { name: 'Let the shelf close by itself' }).waitFor();
  await page.mouse.click(300, 700);
  await shelf.waitFor();
  await mac.control('pin').focus();
  await mac.press('Escape');
  await shelf.waitFor({ state: 'hidden' });
  await mac.focuses('broom');
});

onMac('An empty shelf leads further', {}, async (mac) => {
  await notched(mac);
  const apps = await mac.surface('shelf').locator('.tile').evaluateAll((all) => all.map(({ dataset }) => dataset.bundle));
  for (const app of apps) await mac.happens(`place ${app} buried`);
  await mac.control('show-buried').waitFor();
  await mac.checkAccess('the empty shelf');
  await mac.picture('the empty shelf');
  await mac.control('show-buried').click();
  await mac.control('group:buried').waitFor();
  await mac.checkAccess('the shelf with buried apps');
  await mac.picture('the shelf with buried apps');
});
