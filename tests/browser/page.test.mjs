import assert from 'node:assert/strict';
import { onMac } from './mac.mjs';
import { sorted } from './playground.mjs';

onMac('What the user is at survives what happens meanwhile', {}, async (mac) => {
  const { page } = mac;
  await mac.openSettings();
  const button = mac.control('more:com.spotify.client');
  await button.focus();
  const { y } = await button.boundingBox();
  await mac.happens('icon badge Slack "9"');
  await mac.happens('launch com.example.before');
  await mac.happens('quit Dropbox');
  await page.getByText('not running').first().waitFor();
  await mac.control('app:com.example.before').waitFor();
  assert.equal(await mac.focused(), 'more:com.spotify.client');
  assert.ok(Math.abs((await button.boundingBox()).y - y) < 2, 'the list stands still');
});

onMac('Wherever the keyboard is, it is seen', {}, async (mac) => {
  await mac.openSettings('General');
  const stops = new Set();
  await mac.surface('settings').focus();
  for (let stop = 0; stop < 14; stop += 1) {
    await mac.press('Tab');
    stops.add(await mac.focused());
    assert.ok(await mac.focusIsSeen(), await mac.focused());
  }
  assert.ok(stops.size > 8, [...stops].join());
  await mac.closeSettings();
  await mac.focuses('broom');
});

onMac('The page follows the system from light to dark, until told otherwise', { colorScheme: 'dark' }, async (mac) => {
  const { page } = mac;
  const brightness = () => page.evaluate(() => Number(/\d+/.exec(getComputedStyle(document.body).backgroundColor)[0]));
  assert.ok(await brightness() < 60);
  await mac.broom.click();
  await mac.shows([...sorted.bar, ...sorted.tucked]);
  await mac.picture('dark');
  await mac.desk.getByLabel('Light', { exact: true }).check();
  assert.ok(await brightness() > 200);
  await mac.load();
  assert.ok(await brightness() > 200, 'the choice is kept');
});

onMac('A narrow window holds everything', { viewport: { width: 390, height: 844 }, hasTouch: true }, async (mac) => {
  const { page } = mac;
  const overflow = () => page.evaluate(() => document.documentElement.scrollWidth - innerWidth);
  assert.equal(await overflow(), 0);
  await mac.shows(sorted.bar);
  await mac.broom.tap();
  await mac.shows([...sorted.bar, ...sorted.tucked]);
  await mac.checkAccess('the narrow page', 'html');
  for (const name of ['Menu Bar', 'General']) {
    await mac.openSettings(name);
    assert.equal(await overflow(), 0);
    const box = await mac.surface('settings').boundingBox();
    assert.ok(box.x >= 0 && box.x + box.width <= 390, JSON.stringify(box));
    const content = mac.surface('settings').locator('.surface-content');
    assert.equal(await content.evaluate((element) => element.scrollWidth - element.clientWidth), 0);
    await mac.picture(`narrow ${name}`);
    await mac.closeSettings();
  }
});
