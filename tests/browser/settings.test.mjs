import assert from 'node:assert/strict';
import { onMac } from './mac.mjs';

onMac('Settings are kept', {}, async (mac) => {
  const { page } = mac;
  const slack = page.getByRole('radiogroup', { name: 'Where Slack goes' });
  const newIcons = page.getByLabel("Apps that you haven't sorted go to");
  const hover = page.getByLabel('Show tucked icons when the pointer rests on the broom');
  const autoTuck = page.getByLabel('Tuck icons back in');
  const askAbout = page.getByLabel('Ask where new icons go');

  await mac.openSettings();
  await slack.getByLabel('Buried').check();
  await newIcons.selectOption('Tucked');
  await mac.icon('com.tinyspeck.slackmacgap').waitFor({ state: 'detached' });
  await mac.checkAccess('the page Menu Bar');
  await mac.picture('the settings');
  await page.getByRole('tab', { name: 'General' }).click();
  await hover.check();
  await askAbout.uncheck();
  await autoTuck.selectOption('After 30 seconds');
  await mac.checkAccess('the page General');
  await page.getByRole('tab', { name: 'About' }).click();
  await page.getByText('MIT License').waitFor();
  await mac.checkAccess('the page About');

  const areKept = async (again) => {
    await again();
    await mac.openSettings('General');
    assert.ok(await hover.isChecked());
    assert.ok(!await askAbout.isChecked());
    assert.equal(await autoTuck.locator('option:checked').textContent(), 'After 30 seconds');
    await page.getByRole('tab', { name: 'Menu Bar' }).click();
    assert.ok(await slack.getByLabel('Buried').isChecked());
    assert.equal(await newIcons.inputValue(), '1');
  };
  await areKept(() => mac.load());
  await areKept(async () => {
    await page.goto('about:blank');
    assert.ok(await mac.playground.stop());
    await mac.playground.start();
    await mac.load();
  });
});

onMac('An import of a broken file is told, and loses nothing', {}, async (mac) => {
  const { page, sheet } = mac;
  await mac.openSettings();
  await mac.control('new-icons').waitFor();
  const before = await mac.playground.layout();
  await mac.control('import').click();
  await sheet.getByLabel(/paste a file/).fill('{"velko": broken');
  await mac.checkAccess('the open panel');
  await sheet.getByRole('button', { name: 'Open' }).click();
  await sheet.getByRole('button', { name: 'OK' }).waitFor();
  await mac.checkAccess('the alert');
  await mac.picture('the alert');
  await sheet.getByRole('button', { name: 'OK' }).click();
  await page.getByRole('alertdialog').waitFor({ state: 'hidden' });
  assert.deepEqual(await mac.playground.layout(), before);
});
