// The simulated Mac as a person sees it: a page in a browser, with functions for what a person does.

import assert from 'node:assert/strict';
import { mkdir, readFile } from 'node:fs/promises';
import { createRequire } from 'node:module';
import { join } from 'node:path';
import test, { after } from 'node:test';
import { chromium } from 'playwright-core';
import { Playground, root } from './playground.mjs';

const patience = Number(process.env.VELKO_PATIENCE ?? 30_000);  // ms; machines may be slow
const pictures = process.env.VELKO_PICTURES ?? join(root, 'build/browser');
const axe = await readFile(createRequire(import.meta.url).resolve('axe-core/axe.min.js'), 'utf8');

/** How Chromium is started. */
export const flags = ['--no-sandbox', '--disable-dev-shm-usage', '--font-render-hinting=none'];

let browser;
const openBrowser = () => chromium.launch({
  executablePath: process.env.VELKO_CHROMIUM ?? '/usr/bin/chromium',
  args: flags,
});
after(() => browser?.close());

export class Mac {
  /** Starts a playground in a new folder, and a browser with its page. */
  static async open({ isSetUp = true, ...look } = {}) {
    browser ??= await openBrowser();
    const playground = await Playground.inNewFolder({ isSetUp });
    const context = await browser.newContext({
      viewport: { width: 1440, height: 900 }, reducedMotion: 'reduce', timezoneId: 'UTC', ...look,
    });
    context.setDefaultTimeout(patience);
    const mac = new Mac(playground, context, await context.newPage());
    mac.colorScheme = look.colorScheme ?? 'light';
    await mac.load();
    await (isSetUp ? mac.logs('32 apps with icons') : mac.surface('setup').waitFor());
    return mac;
  }

  constructor(playground, context, page) {
    Object.assign(this, { playground, context, page, complaints: [] });
    this.desk = page.getByRole('complementary', { name: 'Control desk' });
    this.broom = page.locator('#broom');
    this.menu = page.locator('#menu');
    this.sheet = page.getByRole('alertdialog');
    page.on('pageerror', (error) => this.complaints.push(String(error)));
    page.on('console', (message) => {
      if (['error', 'warning'].includes(message.type())) this.complaints.push(message.text());
    });
  }

  /** Opens the page and waits for the first message. */
  async load() {
    await this.page.goto(this.playground.address);
    await this.broom.waitFor();
  }

  async end() {
    await this.context.close();
    const endedWell = await this.playground.stop();
    await this.playground.removeFolder();
    assert.ok(endedWell, 'the playground ends without an error');
    assert.deepEqual(this.complaints, [], 'the browser has nothing to complain about');
  }

  // What is on the screen

  surface(name) { return this.page.locator(`[data-surface="${name}"]`); }
  control(id) { return this.page.locator(`.surface [data-id="${id}"]`); }
  /** A text that somebody can see: not what a screen reader is told. */
  text(words) { return this.page.locator('#screen, .watch, .desk, .toast, .ended').getByText(words); }
  icon(app) { return this.page.locator(`.status-item.app[data-bundle="${app}"]`); }
  entry(title) { return this.menu.getByRole('menuitem', { name: title, exact: true }); }

  async shownApps() {
    const icons = await this.page.locator('.status-item.app').all();
    return Promise.all(icons.map((icon) => icon.getAttribute('data-bundle')));
  }

  /** Waits until the icons of exactly these apps show, in any order. */
  async shows(apps) {
    await this.page.waitForFunction((wanted) => {
      const shown = [...document.querySelectorAll('.status-item.app')].map((icon) => icon.dataset.bundle);
      return shown.sort().join() === wanted;
    }, [...apps].sort().join());
  }

  /** Waits until Velko's log has that text. */
  logs(text) {
    return this.page.locator('#watch-log').getByText(text).first().waitFor({ state: 'attached' });
  }

  /** The focused element: its id, or else its name. */
  focused() {
    return this.page.evaluate(() => {
      const { activeElement: active } = document;
      return active.closest('[data-id]')?.dataset.id ?? (active.id || active.ariaLabel || active.nodeName);
    });
  }

  /** Waits until that element has the focus. */
  async focuses(name) {
    for (const end = Date.now() + patience; Date.now() < end && await this.focused() !== name;) {
      await this.page.evaluate(() => new Promise(requestAnimationFrame));
    }
    assert.equal(await this.focused(), name);
  }

  /** Whether a person can see the focused element: it is within the window and has a ring around it. */
  focusIsSeen() {
    return this.page.evaluate(() => {
      const { activeElement: active } = document;
      const { top, bottom } = active.getBoundingClientRect();
      const ring = active.closest('.segment')?.querySelector('span') ?? active;
      return active.matches(':focus-visible') && getComputedStyle(ring).outlineStyle === 'solid'
        && bottom > 0 && top < innerHeight;
    });
  }

  // What a person does

  /** Plays a step by typing it into the desk. */
  async play(line) {
    await this.desk.getByLabel('Any step of a scenario').fill(line);
    await this.desk.getByRole('button', { name: 'Do', exact: true }).click();
    await this.page.waitForFunction(() => document.getElementById('line').value === '');
  }

  /** Plays a step without touching the page, for things that happen while somebody uses it. */
  async happens(line) {
    const token = await this.page.locator('meta[name="velko-token"]').getAttribute('content');
    const answer = await this.page.request.post(new URL('desk', this.playground.address).href, {
      headers: { 'X-Velko-Token': token, 'Content-Type': 'application/json' }, data: { line },
    });
    assert.equal(answer.status(), 204, await answer.text());
  }

  async openMenu() {
    await this.broom.click({ button: 'right' });
    await this.menu.waitFor();
  }

  async openSettings(page = 'Menu Bar') {
    await this.openMenu();
    await this.entry('Settings…').click();
    const settings = this.surface('settings');
    await settings.getByRole('tab', { name: page }).click();
    await settings.getByRole('tab', { name: page, selected: true }).waitFor();
  }

  async closeSettings() {
    await this.surface('settings').getByRole('button', { name: 'Close' }).click();
    await this.surface('settings').waitFor({ state: 'hidden' });
  }

  async press(...keys) {
    for (const key of keys) await this.page.keyboard.press(key);
  }

  /** Presses Tab until that element has the focus. */
  async tabTo(element) {
    for (let stop = 0; stop < 80; stop += 1) {
      await this.press('Tab');
      if (await element.evaluate((each) => each === document.activeElement)) return;
    }
    assert.fail('Tab never gets there');
  }

  /** Drags that window by its title bar. */
  async drag(window, by) {
    const { x, y, width } = await window.locator('.title-bar').boundingBox();
    await this.page.mouse.move(x + width / 2, y + 20);
    await this.page.mouse.down();
    await this.page.mouse.move(x + width / 2 + by.x, y + 20 + by.y, { steps: 4 });
    await this.page.mouse.up();
  }

  /** Waits until that window is in front of all others. */
  async isInFront(window) {
    const handle = await window.elementHandle();
    await this.page.waitForFunction((each) => {
      const height = (one) => Number(getComputedStyle(one).zIndex);
      const windows = [...document.querySelectorAll('.window:not([hidden])')];
      return windows.every((one) => one === each || height(one) < height(each));
    }, handle);
  }

  // What remains for a person to look at

  picture(name, options = {}) {
    return this.page.screenshot({ path: join(pictures, `${name}.png`), ...options });
  }

  /** Fails if some people cannot use something, in light or dark colours: on the Mac's screen, or in another part. */
  async checkAccess(what, part = '#screen') {
    if (!await this.page.evaluate(() => 'axe' in globalThis)) await this.page.evaluate(axe);
    for (const colorScheme of ['light', 'dark']) {
      await this.page.emulateMedia({ colorScheme });
      await this.page.waitForFunction((scheme) => [scheme, undefined].includes(document.documentElement.dataset.theme), colorScheme);
      const faults = await this.page.evaluate(async (each) => {
        const { violations } = await globalThis.axe.run(each, { resultTypes: ['violations'] });
        return violations.map(({ nodes }) => `${nodes[0].html} (${nodes.length} such): ${nodes[0].failureSummary}`);
      }, part);
      this.complaints.push(...faults.map((fault) => `${what}, ${colorScheme}: ${fault}`));
    }
    await this.page.emulateMedia({ colorScheme: this.colorScheme });
  }
}

/** A test with its own Mac. A picture of the end is kept, also when the test fails. */
export function onMac(name, options, body) {
  test(name, { timeout: 4 * patience }, async () => {
    await mkdir(pictures, { recursive: true });
    const mac = await Mac.open(options);
    let failure;
    try {
      await body(mac);
    } catch (error) {
      failure = error;
    }
    await mac.picture(name.replace(/\W+/g, '-').toLowerCase()).catch(() => {});
    await mac.end().catch((error) => { failure ??= error; });
    if (failure) throw failure;
  });
}
