import assert from 'node:assert/strict';
import { onMac } from './mac.mjs';

onMac('A first run ends with a tidy bar', { isSetUp: false }, async (mac) => {
  const { page } = mac;
  const heights = new Set();
  const measure = async () => heights.add(await mac.surface('setup').evaluate((each) => each.offsetHeight));
  await measure();
  await mac.checkAccess('the welcome');
  await page.getByRole('button', { name: "Let's Tidy" }).click();
  await measure();
  await mac.checkAccess('the question for permission');
  await mac.control('permission:open').click();
  await mac.surface('guide').waitFor();
  await mac.checkAccess('the guide');
  await mac.desk.getByLabel('Accessibility permission').check();
  await page.getByRole('button', { name: 'Close System Settings' }).click();

  await mac.text('1 of 30').waitFor();
  await measure();
  await mac.checkAccess('a card');
  await mac.control('sort:tucked').click();
  await mac.text('2 of 30').waitFor();
  await mac.control('sort:buried').click();
  await mac.text('3 of 30').waitFor();
  await mac.control('sort:rest').click();
  await mac.text('6 in the bar, 23 tucked, 1 buried.').waitFor();
  await measure();
  await mac.checkAccess('the summary');
  await mac.picture('the summary of the setup');
  await mac.control('summary:app:com.getdropbox.dropbox').click();
  await mac.text('Another place').waitFor();
  await mac.press('ArrowLeft');
  await mac.control('summary:apply').waitFor();
  assert.equal((await mac.shownApps()).length, 30, 'nothing moves before the user says so');

  await page.getByRole('button', { name: 'Apply to Menu Bar' }).click();
  await mac.text('23 icons are behind the broom. Click it to see them.').waitFor();
  await mac.checkAccess('the last step');
  await measure();
  assert.equal(heights.size, 1, 'the window is as high at every step');
  await page.getByRole('button', { name: 'Done' }).click();
  await mac.surface('setup').waitFor({ state: 'hidden' });
  await page.waitForFunction(() => document.querySelectorAll('.status-item.app').length === 6);
  await mac.checkAccess('the tidy bar', 'html');
});

onMac('A first run needs no mouse', { isSetUp: false }, async (mac) => {
  const { page } = mac;
  await mac.press('Enter');
  await mac.control('permission:open').waitFor();
  await mac.press('Enter');
  const permission = page.getByRole('dialog', { name: 'System Settings' }).getByRole('switch');
  await mac.tabTo(permission);
  await mac.press('Space', 'Shift+Tab', 'Enter');
  await mac.text('1 of 30').waitFor();
  await mac.press('1');
  await mac.text('2 of 30').waitFor();
  await mac.press('3');
  await mac.text('3 of 30').waitFor();
  await mac.press('ArrowLeft');
  await mac.text('2 of 30').waitFor();
  await mac.tabTo(mac.control('sort:rest'));
  await mac.press('Enter');
  await mac.control('summary:apply').waitFor();
  await mac.press('Enter');
  await mac.control('done:close').waitFor();
  await mac.press('Enter');
  await mac.surface('setup').waitFor({ state: 'hidden' });
  await page.waitForFunction(() => document.querySelectorAll('.status-item.app').length < 10);
  await mac.focuses('broom');
});

onMac('A setup that was put off waits in the settings', { isSetUp: false }, async (mac) => {
  const setup = mac.surface('setup');
  await mac.picture('the welcome');
  await mac.tabTo(mac.control('welcome:later'));
  await mac.press('Enter');
  await setup.waitFor({ state: 'hidden' });
  await mac.logs('put off');
  await mac.openSettings();
  await mac.surface('settings').getByRole('button', { name: 'Finish Setup…' }).click();
  await setup.waitFor();
});
