import assert from 'node:assert/strict';
import { onMac } from './mac.mjs';
import { sorted } from './playground.mjs';

onMac('A new icon is asked about, and goes where the answer says', {}, async (mac) => {
  const { page } = mac;
  await mac.shows(sorted.bar);
  await mac.desk.getByRole('button', { name: 'A newcomer' }).click();
  await page.waitForFunction(() => document.querySelector('#apps .chip.accent')?.textContent === 'new');
  await mac.broom.click();
  await mac.text('Linear just moved in').waitFor();
  await mac.checkAccess('the note');
  await mac.picture('the note');
  await mac.control('keep:com.linear').click();
  await mac.text('Spotless. Nothing to sort.').waitFor();
  await mac.shows([...sorted.bar, 'com.linear']);
  await mac.surface('note').waitFor({ state: 'hidden' });
  assert.equal((await mac.playground.layout()).sections['com.linear'], 'bar');
});

onMac('A full note shows its button', {}, async (mac) => {
  await mac.shows(sorted.bar);
  for (let app = 1; app <= 12; app += 1) await mac.happens(`launch com.example.app${app}`);
  await mac.logs('new icons, tucked until answered: com.example.app1');
  await mac.broom.click();
  const later = mac.surface('note').getByRole('button', { name: 'Later' });
  await later.waitFor();
  const note = await mac.surface('note').boundingBox();
  const { y, height } = await later.boundingBox();
  assert.ok(y + height < note.y + note.height - 5, 'nothing has to be scrolled for it');
  await mac.checkAccess('a full note');
  await mac.picture('a full note');
  await mac.press('2');
  await mac.logs('com.example.app1 -> tucked (new icon answered)');
  await mac.control('keep-all').click();
  await mac.text('Spotless. Nothing to sort.').waitFor();
  assert.equal((await mac.playground.layout()).sections['com.example.app12'], 'bar');
});

onMac('The shelf opens an app, and moves one', {}, async (mac) => {
  await mac.desk.getByLabel('Notch').check();
  await mac.broom.click();
  const shelf = mac.surface('shelf');
  await shelf.getByRole('button', { name: 'Spotify' }).waitFor();
  await mac.checkAccess('the shelf');
  await mac.picture('the shelf');
  await shelf.getByRole('button', { name: 'Dropbox' }).click({ button: 'right' });
  await mac.entry('Keep in the Bar').click();
  await mac.icon('com.getdropbox.dropbox').waitFor();
  await shelf.getByRole('button', { name: 'Spotify' }).click();
  await mac.icon('com.spotify.client').waitFor();
  assert.equal((await mac.playground.layout()).sections['com.getdropbox.dropbox'], 'bar');
});
