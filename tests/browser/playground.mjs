// The playground of one test: the program in its own folder, started as ./run starts it.

import { spawn } from 'node:child_process';
import { once } from 'node:events';
import { mkdir, mkdtemp, readFile, rm, writeFile } from 'node:fs/promises';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { createInterface } from 'node:readline';
import { fileURLToPath } from 'node:url';

export const root = fileURLToPath(new URL('../..', import.meta.url));
const program = process.env.VELKO_PLAYGROUND ?? join(root, 'build/release/Playground/velko-playground');

const bar = ['com.tinyspeck.slackmacgap', 'com.1password.1password', 'us.zoom.xos', 'com.tailscale.ipn.macos',
  'com.culturedcode.ThingsMac', 'com.flexibits.fantastical2.mac'];
const buried = ['com.figma.agent', 'com.adobe.acc.AdobeCreativeCloud', 'com.logi.ghub', 'com.logi.optionsplus',
  'com.backblaze.bzbmenu', 'com.crashplan.desktop', 'com.obsproject.obs-studio', 'com.postmanlabs.mac',
  'com.sonos.macController2'];
const tucked = ['com.getdropbox.dropbox', 'com.google.drivefs', 'com.microsoft.OneDrive', 'com.spotify.client',
  'com.docker.docker', 'com.microsoft.teams2', 'net.whatsapp.WhatsApp', 'com.hnc.Discord', 'com.raycast.macos',
  'com.nordvpn.macos', 'com.toggl.daneel', 'com.github.GitHubClient', 'com.elgato.StreamDeck',
  'com.grammarly.ProjectLlama', 'com.todoist.mac.Todoist'];

/** A layout after the setup, with the sample apps sorted. */
export const sorted = { bar, tucked, buried };

function sortedLayout() {
  const sections = Object.entries(sorted).flatMap(([section, apps]) => apps.map((app) => [app, section]));
  return { version: 1, hasCompletedSetup: true, seenApps: [], sections: Object.fromEntries(sections) };
}

export class Playground {
  /** Starts the playground in a new folder, with or without a layout after the setup. */
  static async inNewFolder({ isSetUp = true } = {}) {
    const playground = new Playground(await mkdtemp(join(tmpdir(), 'velko-browser-')));
    if (isSetUp) await writeFile(playground.layoutFile, JSON.stringify(sortedLayout()));
    await playground.start();
    return playground;
  }

  constructor(home) {
    this.home = home;
    this.layoutFile = join(home, 'layout.json');
  }

  async start() {
    this.process = spawn(program, ['--home', this.home, '--no-open'], { stdio: ['ignore', 'pipe', 'inherit'] });
    const ended = once(this.process, 'exit').then(() => { throw new Error(`${program} ended early`); });
    const lines = createInterface({ input: this.process.stdout });
    [this.address] = await Promise.race([once(lines, 'line'), ended]);
    ended.catch(() => {});
  }

  /** Ends it as Ctrl-C does. Resolves to whether it ended well. */
  async stop() {
    const ended = once(this.process, 'exit');
    this.process.kill('SIGINT');
    const [status] = await ended;
    return status === 0;
  }

  async layout() {
    return JSON.parse(await readFile(this.layoutFile, 'utf8'));
  }

  /** Does what an administrator does: places what the organisation manages. */
  async manage(layout) {
    await mkdir(join(this.home, 'Managed'), { recursive: true });
    await writeFile(join(this.home, 'Managed', 'layout.json'), JSON.stringify(layout), { mode: 0o644 });
  }

  removeFolder() {
    return rm(this.home, { recursive: true, force: true });
  }
}
