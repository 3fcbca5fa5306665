import assert from 'node:assert/strict';
import { onMac } from './mac.mjs';
import { sorted } from './playground.mjs';

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
  await askAbout.uncheck();
  await mac.icon('com.tinyspeck.slackmacgap').waitFor({ state: 'detached' });
  await mac.checkAccess('the page Menu Bar');
  await mac.picture('the settings');
  await page.getByRole('tab', { name: 'General' }).click();
  await hover.check();
  await autoTuck.selectOption('After 30 seconds');
  await mac.checkAccess('the page General');
  await page.getByRole('tab', { name: 'About' }).click();
  await mac.text('MIT License').waitFor();
  await mac.checkAccess('the page About');

  const areKept = async (again) => {
    await again();
    await mac.openSettings('General');
    assert.ok(await hover.isChecked());
    assert.equal(await autoTuck.locator('option:checked').textContent(), 'After 30 seconds');
    await page.getByRole('tab', { name: 'Menu Bar' }).click();
    assert.ok(await slack.getByLabel('Buried').isChecked());
    assert.equal(await newIcons.inputValue(), '1');
    assert.ok(!await askAbout.isChecked());
  };
  await areKept(() => mac.load());
  await areKept(async () => {
    await page.goto('about:blank');
    assert.ok(await mac.playground.stop());
    await mac.playground.start();
    await mac.load();
  });
});

onMac('A new app is answered where it is listed', {}, async (mac) => {
  const { page } = mac;
  await mac.shows(sorted.bar);
  await mac.desk.getByRole('button', { name: 'A newcomer' }).click();
  await mac.openSettings();
  const places = page.getByRole('radiogroup', { name: 'Where Linear goes' });
  await places.waitFor();
  assert.equal(await places.getByRole('radio', { checked: true }).count(), 0, 'nothing is answered yet');
  await mac.picture('a new app in the settings');
  await places.getByLabel('Tucked').check();
  await mac.logs('-> tucked (new icon answered)');
  await page.getByRole('radiogroup', { name: 'Which apps are listed' }).getByLabel('Tucked').check();
  await mac.control('app:com.tinyspeck.slackmacgap').waitFor({ state: 'detached' });
  await places.waitFor();
});

onMac('A layout that cannot be read is locked until the user decides', {}, async (mac) => {
  const { page } = mac;
  await mac.openSettings();
  await mac.happens('file spoil');
  await mac.happens('file reload');
  await mac.control('apps:locked').waitFor();
  await mac.checkAccess('the locked page Menu Bar');
  await page.getByRole('tab', { name: 'General' }).click();
  assert.ok(await mac.control('hover').getByRole('switch').isDisabled());
  await mac.checkAccess('the locked page General');
  await mac.picture('the locked settings');
  await mac.control('problem:layout:afresh').click();
  await mac.sheet.getByRole('button', { name: 'Start Afresh' }).click();
  await page.getByRole('button', { name: "Let's Tidy" }).click();  // in front of the settings
  assert.ok((await mac.playground.layout()).sections);
});

onMac('What an organisation manages is locked', {}, async (mac) => {
  const { page } = mac;
  const locked = { sections: { 'com.1password.1password': 'buried' }, reveal: { hover: true } };
  await mac.playground.manage(locked);
  await mac.happens('file reload');
  await mac.icon('com.1password.1password').waitFor({ state: 'detached' });
  await mac.openSettings();
  const places = page.getByRole('radiogroup', { name: 'Where 1Password goes' });
  assert.ok(await places.getByLabel('Buried').isChecked());
  assert.ok(await places.getByLabel('Bar').isDisabled());
  await mac.control('managed:com.1password.1password').getByText('Managed by your organisation').waitFor();
  await mac.checkAccess('managed apps');
  await mac.picture('a managed app in the settings');
  await page.getByRole('tab', { name: 'General' }).click();
  const hover = mac.control('hover').getByRole('switch');
  assert.ok(await hover.isChecked() && await hover.isDisabled());
  assert.ok(await mac.control('pop-out').getByRole('switch').isEnabled());
  await mac.checkAccess('managed settings');
  await mac.picture('managed settings');
  await mac.playground.manage('no object');
  await mac.happens('file reload');
  await mac.text("Your organisation's layout can't be used.").waitFor();
  assert.ok(await hover.isEnabled() && !await hover.isChecked());
  await mac.picture('a managed layout with a fault');
  assert.equal((await mac.playground.layout()).sections['com.1password.1password'], 'bar');
});

onMac('An import of a broken file is told, and loses nothing', {}, async (mac) => {
  const { page, sheet } = mac;
  await mac.openSettings();
  await mac.control('new-icons').waitFor();
  const { sections } = await mac.playground.layout();
  await mac.control('import').click();
  await sheet.getByLabel(/paste a file/).fill('{"velko": broken');
  await mac.checkAccess('the open panel');
  await sheet.getByRole('button', { name: 'Open' }).click();
  await sheet.getByRole('button', { name: 'OK' }).waitFor();
  await mac.checkAccess('the alert');
  await mac.picture('the alert');
  await sheet.getByRole('button', { name: 'OK' }).click();
  await page.getByRole('alertdialog').waitFor({ state: 'hidden' });
  assert.deepEqual((await mac.playground.layout()).sections, sections);
});

onMac('The settings need no mouse', {}, async (mac) => {
  const { page } = mac;
  await mac.broom.focus();
  await mac.press('ArrowDown');
  await mac.focuses('Open');
  for (let item = 0; item < 9 && await mac.focused() !== 'Settings…'; item += 1) await mac.press('ArrowDown');
  await mac.focuses('Settings…');
  await mac.press('Enter');
  const settings = mac.surface('settings');
  await settings.waitFor();
  await mac.tabTo(settings.getByRole('tab', { selected: true }));
  for (let turn = 0; turn < 5 && !await mac.control('pop-out').isVisible(); turn += 1) {
    await mac.press('ArrowRight');
    await page.waitForTimeout(200);
  }
  const popOut = mac.control('pop-out').getByRole('switch');
  await mac.tabTo(popOut);
  assert.ok(await mac.focusIsSeen());
  await mac.press('Space');
  await mac.logs('pop out on change false');
  assert.ok(await popOut.evaluate((each) => each === document.activeElement), 'the focus stays');
  await mac.tabTo(mac.control('show-all'));
  await mac.press('Enter');
  await page.waitForFunction(() => document.querySelectorAll('.status-item.app').length > 20);
  await mac.checkAccess('the settings after the keyboard');
  await mac.tabTo(settings.getByRole('button', { name: 'Close' }));
  await mac.press('Enter');
  await settings.waitFor({ state: 'hidden' });
  await mac.focuses('broom');
});

onMac('The list of apps is searched, selected and put back by keyboard', {}, async (mac) => {
  const { page } = mac;
  const slack = 'com.tinyspeck.slackmacgap';
  const row = (app) => page.locator(`[data-row="app:${app}"]`);
  await mac.shows(sorted.bar);
  await mac.openSettings();
  const list = page.getByRole('grid', { name: 'Apps' });
  const field = page.getByRole('searchbox', { name: 'Search apps' });
  await field.fill('sl');
  await row('com.spotify.client').waitFor({ state: 'detached' });
  await field.press('ArrowDown');
  await page.locator('[data-row][aria-selected="true"]').waitFor();
  assert.equal(await field.getAttribute('aria-activedescendant'), `settings/app:${slack}`);
  await mac.checkAccess('the list while it is searched');
  await field.press('Escape');
  await row('com.spotify.client').waitFor();
  assert.equal(await field.inputValue(), '');

  await list.focus();
  await mac.press('Home', 'z', 'Shift+ArrowUp');
  await mac.text('2 apps selected').waitFor();
  await mac.checkAccess('a selection in the list');
  await mac.picture('a selection in the settings');
  await page.getByRole('radiogroup', { name: 'Where the selected apps go' }).getByLabel('Buried').check();
  await mac.control('undo:what').getByText('2 apps are buried.').waitFor();
  await mac.icon('us.zoom.xos').waitFor({ state: 'detached' });
  await mac.control('undo:button').click();
  await mac.shows(sorted.bar);
  await mac.control('undo:what').getByText('Taken back').waitFor();

  await row(slack).click({ button: 'right' });
  await mac.entry('Tucked').click();
  await mac.icon(slack).waitFor({ state: 'detached' });
  await mac.closeSettings();
  await mac.openSettings('General');
  assert.equal(await mac.surface('settings').locator('.window-title').textContent(), 'General');
});

onMac("Velko's menus are at the top while its window is open", {}, async (mac) => {
  const { page } = mac;
  const menus = page.getByRole('group', { name: "Velko's menus" });
  const slack = 'com.tinyspeck.slackmacgap';
  await mac.shows(sorted.bar);
  assert.ok(!await menus.isVisible(), 'another app is in front');
  await mac.openSettings();
  const place = page.getByRole('radiogroup', { name: 'Where Slack goes' });
  await place.getByLabel('Buried').check();
  await mac.icon(slack).waitFor({ state: 'detached' });
  await menus.getByRole('button', { name: 'Edit' }).click();
  await mac.entry('Undo Bury Slack').waitFor();
  await mac.checkAccess("one of Velko's menus");
  await mac.picture('the menu Edit');
  await mac.entry('Undo Bury Slack').click();
  await mac.shows(sorted.bar);
  await place.getByLabel('Bar').focus();
  await mac.press('Control+Shift+z');
  await mac.icon(slack).waitFor({ state: 'detached' });
  await mac.press('Control+z');
  await mac.shows(sorted.bar);
  await menus.getByRole('button', { name: 'Velko' }).click();
  await mac.entry('About Velko').waitFor();
  await mac.press('ArrowLeft');
  await mac.entry('Copy Diagnostics').click();
  await mac.logs('diagnostics copied');
  await page.locator('#said').getByText('Diagnostics copied.').waitFor({ state: 'attached' });
  await mac.press('Control+f');
  await page.keyboard.type('dr');
  await mac.text('3 apps found.').waitFor();
  await page.locator('#said').getByText('3 results').waitFor({ state: 'attached' });
  await menus.getByRole('button', { name: 'File' }).click();
  await mac.entry('Close').click();
  await mac.surface('settings').waitFor({ state: 'hidden' });
  await menus.waitFor({ state: 'hidden' });
});

onMac('What is done with a selection is in sight on a small display', { viewport: { width: 1100, height: 760 } }, async (mac) => {
  const { page } = mac;
  await mac.shows(sorted.bar);
  await mac.openSettings();
  const isInSight = async (element) => {
    const [screen, box] = [await page.locator('#screen').boundingBox(), await element.boundingBox()];
    assert.ok(box && box.y >= screen.y && box.y + box.height <= screen.y + screen.height, 'it is in sight');
  };
  const row = page.locator('[data-row="app:com.1password.1password"]');
  await row.click({ position: { x: 4, y: 4 } });
  const before = await row.boundingBox();
  await page.keyboard.press('Shift+ArrowDown');
  await mac.text('2 apps selected').waitFor();
  await isInSight(mac.control('place-selected'));
  assert.deepEqual(await row.boundingBox(), before, 'the rows stay where they are');
  await mac.picture('a selection on a small display');
  await page.getByRole('tab', { name: 'General' }).click();
  await mac.control('earlier-layouts').scrollIntoViewIfNeeded();
  await isInSight(page.getByRole('tab', { name: 'General' }));
  await isInSight(mac.control('earlier-layouts'));
  await mac.picture('the end of General on a small display');
});

onMac('An import says what it changes, and can be taken back', {}, async (mac) => {
  const { sheet } = mac;
  await mac.openSettings();
  const before = (await mac.playground.layout()).sections;
  await mac.control('import').click();
  const other = {
    velkoLayout: 1, sections: { 'com.spotify.client': 'bar', 'com.example.elsewhere': 'bar' }, alwaysKeep: [],
    reveal: { autoTuckSeconds: 6, hover: false, notchedStyle: 'shelf', otherStyle: 'inline' },
    newIconDefault: 'bar', askAboutNewIcons: true, popOutOnChange: true,
  };
  await sheet.getByLabel(/paste a file/).fill(JSON.stringify(other));
  await sheet.getByRole('button', { name: 'Open' }).click();
  await sheet.getByText("1 app isn't on this Mac").waitFor();
  await mac.checkAccess('the question before an import');
  await mac.picture('the question before an import');
  await sheet.getByRole('button', { name: 'Import' }).click();
  await mac.shows([...sorted.bar, 'com.spotify.client']);
  await mac.control('undo:button').click();
  await mac.shows(sorted.bar);
  assert.deepEqual((await mac.playground.layout()).sections, before);
});

onMac('What an import has changed comes back from the earlier layouts', {}, async (mac) => {
  const { page, sheet } = mac;
  const slack = 'com.tinyspeck.slackmacgap';
  const history = mac.surface('history');
  const where = async () => (await mac.playground.layout()).sections[slack];
  const before = await where();
  await mac.openSettings('General');
  await mac.control('earlier-layouts').click();
  await history.getByText('There is none yet.').waitFor();
  await mac.checkAccess('no earlier layouts');
  await history.getByRole('button', { name: 'Close' }).click();
  await page.getByRole('tab', { name: 'Menu Bar' }).click();
  await mac.control('import').click();
  await sheet.getByLabel(/paste a file/).fill(JSON.stringify({
    velkoLayout: 1, sections: { [slack]: 'buried' }, alwaysKeep: [], newIconDefault: 'bar', askAboutNewIcons: true,
    popOutOnChange: false, reveal: { autoTuckSeconds: 30, notchedStyle: 'shelf', otherStyle: 'inline', hover: false },
  }));
  await sheet.getByRole('button', { name: 'Open' }).click();
  await sheet.getByRole('button', { name: 'Import' }).click();
  await mac.logs('imported 1 placements');
  assert.equal(await where(), 'buried');
  await page.getByRole('tab', { name: 'General' }).click();
  await mac.control('earlier-layouts').click();
  await history.getByText(/Slack was .*Some settings differ\./).waitFor();
  await mac.checkAccess('the earlier layouts');
  await mac.picture('the earlier layouts');
  const restore = history.getByRole('button', { name: /^Restore the layout of today at .*, before an import$/ });
  await mac.tabTo(restore);
  await mac.press('Enter');
  await mac.logs('restored ');
  assert.equal(await where(), before);
  await history.getByText('before another one was restored').waitFor();
  await mac.picture('an earlier layout is restored');
  await history.getByRole('button', { name: 'Undo Restore' }).click();
  await mac.logs('undone: Restore');
  assert.equal(await where(), 'buried');
});

onMac('Icons without room are named, and come out on the shelf', {}, async (mac) => {
  const { page } = mac;
  for (const step of ['set auto-tuck 0', 'displays laptop', 'set notched-style inline', 'set shelf-when-full off']) {
    await mac.happens(step);
  }
  await mac.broom.click();
  await mac.logs('toggle: collapsed -> revealed');
  await mac.happens('wait 3 s');
  await mac.openSettings('Menu Bar');
  const roomless = mac.control('no-room');
  await roomless.waitFor();
  assert.match(await roomless.textContent(), /^The notch hides .* and \d+ more: there is no room beside it\./);
  await mac.checkAccess('the page Menu Bar with icons without room');
  await mac.picture('icons without room');
  await page.getByRole('tab', { name: 'General' }).click();
  await mac.control('shelf-when-full').getByRole('switch').check();
  await mac.logs('shelf when the bar is full true');
  await mac.broom.click();
  await mac.logs('toggle: revealed -> collapsed');
  await mac.broom.click();
  await mac.logs('out on the shelf');
  await mac.surface('shelf').waitFor();
  await page.keyboard.press('Escape');
  await mac.happens('displays wide');
  await mac.control('wide-displays').getByRole('switch').focus();
  await page.keyboard.press('Space');
  await mac.icon('com.figma.agent').waitFor();
  const widths = page.getByLabel('Wide is a display of');
  await widths.selectOption('3,840 points or more');
  await mac.icon('com.figma.agent').waitFor({ state: 'detached' });
  await widths.selectOption('1,920 points or more');
  await mac.icon('com.figma.agent').waitFor();
  await mac.checkAccess('the page General with wide displays');
  await mac.picture('wide displays in the settings');
});
