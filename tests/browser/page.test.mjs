import assert from 'node:assert/strict';
import { onMac } from './mac.mjs';
import { sorted } from './playground.mjs';

onMac('What the user is at survives what happens meanwhile', {}, async (mac) => {
  await mac.openSettings();
  const button = mac.control('more:com.spotify.client');
  await button.focus();
  const { y } = await button.boundingBox();
  await mac.happens('icon badge Slack "9"');
  await mac.happens('launch com.example.before');
  await mac.happens('quit Dropbox');
  await mac.text('not running').first().waitFor();
  await mac.control('app:com.example.before').waitFor();
  assert.equal(await mac.focused(), 'more:com.spotify.client');
  assert.ok(Math.abs((await button.boundingBox()).y - y) < 2, 'the list stands still');
});

onMac('The log stands still for its reader', {}, async (mac) => {
  const log = mac.page.locator('#watch-log');
  const lines = log.locator('li');
  const happen = async () => {
    for (const section of ['tucked', 'bar', 'tucked', 'bar']) await mac.happens(`place Slack ${section}`);
  };
  await mac.shows(sorted.bar);
  while (await lines.count() < 150) await happen();
  const line = await lines.nth(100).elementHandle();
  await line.scrollIntoViewIfNeeded();
  const text = await line.textContent();
  const { y } = await line.boundingBox();
  await happen();
  await mac.page.waitForFunction((old) => document.querySelectorAll('#watch-log li')[100].textContent !== old, text);
  assert.equal(await line.textContent(), text);
  assert.ok(Math.abs((await line.boundingBox()).y - y) < 2, 'it is where it was');
});

onMac('Windows come to the front, and stay within reach', { isSetUp: false }, async (mac) => {
  const { page } = mac;
  const setup = mac.surface('setup');
  const system = page.getByRole('dialog', { name: 'System Settings' });
  const screen = await page.locator('#screen').boundingBox();
  await page.getByRole('button', { name: "Let's Tidy" }).click();
  await mac.control('permission:open').click();
  await system.waitFor();
  await mac.isInFront(system);
  await mac.drag(system, { x: 60, y: 40 });
  await mac.drag(setup, { x: -2000, y: -2000 });
  await mac.isInFront(setup);
  const { x, y } = await setup.boundingBox();
  assert.ok(Math.abs(x - screen.x) < 2 && y >= screen.y + 28, `${x}, ${y}`);
  await mac.drag(setup, { x: 2000, y: 2000 });
  const bar = await setup.locator('.title-bar').boundingBox();
  assert.ok(bar.x + bar.width <= screen.x + screen.width + 1 && bar.y + bar.height <= screen.y + screen.height + 1);
  await system.getByText('Allow the apps below').click();
  await mac.isInFront(system);
  await system.getByRole('switch').check();
  await mac.isInFront(setup);
  await setup.getByRole('button', { name: 'Close' }).click();
  await mac.openMenu();
  await mac.entry('Settings…').click();
  await mac.isInFront(mac.surface('settings'));
  const first = await mac.surface('settings').boundingBox();
  await mac.drag(mac.surface('settings'), { x: -50, y: 30 });
  await mac.closeSettings();
  await mac.openSettings();
  assert.deepEqual(await mac.surface('settings').boundingBox(), first, 'it opens where it opened first');
});

onMac('Pages that nobody sees leave the others their connections', {}, async (mac) => {
  for (let number = 0; number < 7; number += 1) {
    await mac.page.evaluate(() => {
      Object.defineProperty(document, 'hidden', { value: true, configurable: true });
      document.dispatchEvent(new Event('visibilitychange'));
    });
    const other = await mac.context.newPage();
    await other.goto(mac.playground.address);
    await other.locator('#broom').waitFor();
    mac.page = other;
  }
  const [first] = mac.context.pages();
  const isSeen = (page) => page.locator('.status-text', { hasText: 'seen' });
  await mac.happens('icon title Slack "seen"');
  await isSeen(mac.page).waitFor();
  assert.equal(await isSeen(first).count(), 0);
  await first.evaluate(() => {
    Object.defineProperty(document, 'hidden', { value: false });
    document.dispatchEvent(new Event('visibilitychange'));
  });
  await isSeen(first).waitFor();
});

onMac('Who comes without the token is told where to find it', {}, async (mac) => {
  const { page } = mac;
  const key = new URL(mac.playground.address).searchParams.get('token');
  const answer = await page.goto(new URL('/', mac.playground.address).href);
  assert.equal(answer.status(), 403);
  assert.ok(!(await page.content()).includes(key));
  await page.getByRole('heading', { name: 'This address lacks its token.' }).waitFor();
  await mac.checkAccess('the locked page', 'html');
  assert.equal(mac.complaints.splice(0).length, 1, 'the browser tells of the refusal');
});

onMac('The desk does as it is told, and says when it cannot', {}, async (mac) => {
  const { page, desk } = mac;
  const odd = 'com.odd.$&a|b "c"';
  await mac.happens('set ask off');
  await mac.happens(`launch ${JSON.stringify(odd)}`);
  await desk.locator('.desk-app', { hasText: '$&a|b' }).click();
  await desk.getByLabel('Icon’s text').fill("$' \\ | “x”");
  await desk.getByRole('button', { name: 'Change' }).click();
  await page.locator('.status-text').getByText("$' \\ | “x”").waitFor();

  // A switch stays as the user set it until the program answers. If no answer can come, it goes back.
  const notch = desk.getByLabel('Notch');
  const held = [];
  await page.route('**/desk', (route) => { held.push(route); });
  await notch.check();
  const clock = await desk.locator('.desk-clock').textContent();
  await page.waitForFunction((old) => document.querySelector('.desk-clock').textContent !== old, clock);
  assert.ok(await notch.isChecked());
  await held[0].abort();
  await mac.text('The playground does not answer.').waitFor();
  assert.ok(!await notch.isChecked());
  assert.equal(mac.complaints.splice(0).length, 1, 'the browser tells of what was not sent');
});

onMac('A key that is held down presses once', { isSetUp: false }, async (mac) => {
  const hold = async (key, acts) => {
    await mac.page.keyboard.down(key);
    await acts;
    for (let time = 0; time < 4; time += 1) await mac.page.keyboard.down(key);
    await mac.page.keyboard.up(key);
    await mac.play('say "all that was asked for is done"');
  };
  await hold('Enter', mac.control('permission:open').waitFor());
  assert.ok(await mac.surface('guide').isHidden(), 'Enter went on by one step');
  await mac.desk.getByLabel('Accessibility permission').check();
  await mac.control('permission:go').click();
  await mac.text('1 of 30').waitFor();
  await mac.surface('setup').focus();
  await hold('1', mac.text('2 of 30').waitFor());
  await mac.text('2 of 30').waitFor();
  await mac.broom.focus();
  await mac.press('ArrowDown');
  await mac.menu.waitFor();
  await hold('Escape', mac.menu.waitFor({ state: 'hidden' }));
  assert.ok(await mac.surface('setup').isVisible());
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
  const isInSight = async (element) => {
    const { x, width } = await element.boundingBox();
    return x >= 0 && x + width <= page.viewportSize().width;
  };
  await mac.openMenu();
  await mac.press('ArrowRight');
  await mac.entry('Spotify').waitFor();
  assert.ok(await isInSight(mac.entry('Spotify')), 'the submenu fits');
  await mac.press('Escape');
  await mac.happens('displays laptop');
  await page.locator('#screen.has-notch').waitFor();
  for (const width of [390, 340, 800, 390]) {
    await page.setViewportSize({ width, height: 844 });
    await page.evaluate(() => new Promise(requestAnimationFrame));
    const notch = await page.locator('.notch').boundingBox();
    const broom = await mac.broom.boundingBox();
    assert.ok(broom.x >= notch.x + notch.width && await isInSight(mac.broom), `at ${width}: ${broom.x}`);
  }
});
