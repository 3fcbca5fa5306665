import { onMac } from './mac.mjs';
import { sorted } from './playground.mjs';

const withTucked = [...sorted.bar, ...sorted.tucked];
const all = [...withTucked, ...sorted.buried];

onMac('A click on the broom brings the icons out, and time tucks them in', {}, async (mac) => {
  await mac.shows(sorted.bar);
  await mac.broom.click();
  await mac.shows(withTucked);
  await mac.play('wait 10 s');
  await mac.shows(sorted.bar);
  await mac.broom.click();
  await mac.shows(withTucked);
  await mac.broom.click();
  await mac.shows(sorted.bar);
  await mac.broom.click({ modifiers: ['Alt'] });
  await mac.shows(all);
});

onMac('The broom has a menu, and with Option one for the curious', {}, async (mac) => {
  await mac.shows(sorted.bar);
  await mac.openMenu();
  for (const title of ['Settings…', 'Check for Updates…', 'Quit Velko']) await mac.entry(title).waitFor();
  await mac.checkAccess('the menu');
  await mac.entry('Open').hover();
  await mac.entry('Spotify').click();
  await mac.shows([...sorted.bar, 'com.spotify.client']);
  await mac.entry('Quit Spotify').waitFor();
  await mac.press('Escape');
  await mac.shows(sorted.bar);

  await mac.broom.click({ button: 'right', modifiers: ['Alt'] });
  await mac.entry('Copy Log').waitFor();
  await mac.checkAccess('the menu for the curious');
  await mac.entry('Copy Log').click();
  await mac.text(/bytes of text/).waitFor();
  await mac.menu.waitFor({ state: 'hidden' });
});

onMac('Menus are walked by arrow keys', {}, async (mac) => {
  await mac.broom.focus();
  await mac.press('ArrowDown');
  await mac.focuses('Open');
  await mac.press('ArrowRight');
  await mac.focuses('Todoist');
  await mac.press('ArrowLeft');
  await mac.focuses('Open');
  await mac.press('ArrowUp');
  await mac.focuses('Quit Velko');
  await mac.press('s', 'Escape');
  await mac.menu.waitFor({ state: 'hidden' });
  await mac.focuses('broom');
});

onMac('A Live Activity brings everything out, and a click tidies all the same', {}, async (mac) => {
  await mac.shows(sorted.bar);
  await mac.desk.getByLabel('iPhone Live Activity').check();
  await mac.play('wait 20 s');
  await mac.shows(all);
  await mac.broom.click();
  await mac.shows(sorted.bar);
});

onMac('Who presents shows an audience only what it may see', {}, async (mac) => {
  const { page } = mac;
  await mac.shows(sorted.bar);
  await mac.openSettings('Presenting');
  await mac.control('presenting').getByRole('switch').check();
  await mac.control('staying:search').getByRole('searchbox').fill('spot');
  await mac.control('stays:com.spotify.client').getByRole('switch').check();
  await mac.checkAccess('the page Presenting');
  await mac.picture('presenting');
  await mac.closeSettings();
  await mac.openMenu();
  await mac.picture('presenting is offered');
  await page.getByRole('menuitemcheckbox', { name: 'Presenting' }).or(mac.entry('Presenting')).click();
  await mac.shows(['com.spotify.client']);
  await mac.picture('before an audience');
  await mac.broom.click();  // nothing can come out, so there is the menu
  await page.getByRole('menuitemcheckbox', { name: 'Presenting', checked: true }).click();
  await mac.shows(sorted.bar);
});
