// The control desk. Most of it posts lines of the scenario language.

import { isUnderWay, post, tell, whileUnderWay } from '/link.js';

const root = document.documentElement;
const byID = (id) => document.getElementById(id);
const day = 86_400_000;

// Lines

const quoted = (text) => `"${text.replace(/[\\"]/g, '\\$&')}"`;
const chosenApp = () => document.querySelector('[name="desk-app"]:checked');

/** Plays the lines of a template, with words in place of $APP and $TEXT. Resolves to whether all could be played. */
async function play(lines, words = {}) {
  for (const line of lines.split('|')) {
    if (!(await post('desk', { line: line.replace(/\$([A-Z]+)/g, (_, name) => words[name]) }))) return false;
  }
  return true;
}

function playOnApp(lines, words = {}) {
  const app = chosenApp();
  if (app) play(lines, { ...words, APP: quoted(app.value) });
  else tell('Choose an app first.');
}

document.addEventListener('click', (event) => {
  const button = event.target.closest('button');
  if (button?.dataset.line) play(button.dataset.line);
  if (button?.dataset.appLine) playOnApp(button.dataset.appLine);
});

document.addEventListener('submit', (event) => {
  event.preventDefault();
  const form = event.target;
  const field = form.querySelector('input');
  const lines = form.dataset.form;
  if (lines === '$RAW') {
    if (field.value.trim()) post('desk', { line: field.value }).then((isDone) => { if (isDone) field.value = ''; });
    return;
  }
  playOnApp(lines, { TEXT: field.type === 'number' ? field.value : quoted(field.value) });
});

byID('hundred').addEventListener('click', async () => {
  const apps = [...document.querySelectorAll('[name="desk-app"][data-running]')].map((app) => app.value);
  const running = new Set(apps);
  for (let number = 1; running.size < 100; number += 1) {
    const app = `com.example.app${number}`;
    if (running.has(app)) continue;
    running.add(app);
    await post('desk', { line: `launch ${app}` });
  }
});

// Switches

let lastFacts = null;
const whileChanging = (control, change) => whileUnderWay(control, change, () => lastFacts && showDesk(lastFacts));

document.addEventListener('change', (event) => {
  const control = event.target;
  const { fact, on, off } = control.dataset;
  if (fact) whileChanging(control, play(control.checked ? on : off));
  if (control.name === 'desk-app') showApp();
  if (control.name === 'theme') chooseTheme(control.value);
});

byID('speed').addEventListener('change', (event) =>
  whileChanging(event.target, post('pace', { speed: Number(event.target.value) })));
byID('jump-stop').addEventListener('click', () => post('pace', { stop: true }));
byID('engine').addEventListener('change', ({ target }) => {
  const { line } = target.selectedOptions[0].dataset;
  whileChanging(target, play(line === 'engine recover' ? line : `engine recover|${line}`));
});

function arrange({ target }) {
  const first = byID('notch').checked ? 'laptop' : 'desk';
  const second = first === 'laptop' ? '+desk' : '+laptop';
  whileChanging(target, play(`displays ${first}${byID('second').checked ? second : ''}`));
}
byID('notch').addEventListener('change', arrange);
byID('second').addEventListener('change', arrange);

// Appearance and motion

const prefersDark = matchMedia('(prefers-color-scheme: dark)');
const prefersLess = matchMedia('(prefers-reduced-motion: reduce)');
let theme = 'auto';

function showTheme() {
  root.dataset.theme = theme === 'auto' ? (prefersDark.matches ? 'dark' : 'light') : theme;
}

function chooseTheme(choice) {
  theme = choice;
  localStorage.setItem('theme', choice);
  showTheme();
}

function showMotion(isReduced) {
  root.dataset.motion = isReduced ? 'reduced' : 'full';
  post('motion', { reduced: isReduced });
}

theme = localStorage.getItem('theme') ?? 'auto';
for (const choice of document.querySelectorAll('[name="theme"]')) choice.checked = choice.value === theme;
prefersDark.addEventListener('change', showTheme);
showTheme();
byID('motion').checked = prefersLess.matches;
byID('motion').addEventListener('change', (event) => showMotion(event.target.checked));
prefersLess.addEventListener('change', () => { byID('motion').checked = prefersLess.matches; showMotion(prefersLess.matches); });
showMotion(prefersLess.matches);

// The tabs below the screen

function watch(tab) {
  for (const each of document.querySelectorAll('[data-watch]')) {
    const isChosen = each === tab;
    each.ariaSelected = String(isChosen);
    each.tabIndex = isChosen ? 0 : -1;
    byID(each.getAttribute('aria-controls')).hidden = !isChosen;
  }
  const page = byID(tab.getAttribute('aria-controls'));
  if (page.id === 'watch-log') page.scrollTop = page.scrollHeight;
}

for (const tab of document.querySelectorAll('[data-watch]')) {
  tab.addEventListener('click', () => watch(tab));
  tab.addEventListener('keydown', (event) => {
    const next = { ArrowRight: tab.nextElementSibling, ArrowLeft: tab.previousElementSibling }[event.key];
    if (!next) return;
    watch(next);
    next.focus();
  });
}

// Showing what the program sends

function showApp() {
  const first = document.querySelector('[name="desk-app"]');
  if (!chosenApp() && first) first.checked = true;
  const app = chosenApp();
  const { running, hung, heavy } = app?.dataset ?? {};
  const isRunning = running !== undefined;
  const isShown = {
    stopped: Boolean(app) && !isRunning,
    running: isRunning,
    responding: isRunning && hung === undefined,
    hung: hung !== undefined,
    light: isRunning && heavy === undefined,
    heavy: heavy !== undefined,
  };
  for (const button of document.querySelectorAll('[data-when]')) {
    button.disabled = !isShown[button.dataset.when];
    if (['hung', 'responding', 'heavy', 'light'].includes(button.dataset.when)) {
      const other = { hung: 'responding', responding: 'hung', heavy: 'light', light: 'heavy' }[button.dataset.when];
      button.hidden = !isShown[button.dataset.when] && (isShown[other] || ['hung', 'heavy'].includes(button.dataset.when));
    }
  }
  for (const form of document.querySelectorAll('[data-when-form]')) {
    for (const field of form.elements) field.disabled = !isRunning;
  }
}

function durationText(milliseconds) {
  const hours = Math.ceil(milliseconds / 3_600_000);
  return milliseconds > 2 * day ? `${Math.ceil(milliseconds / day)} days` : `${hours} ${hours === 1 ? 'hour' : 'hours'}`;
}

function setUnlessUsed(control, property, value) {
  if (!isUnderWay(control) && control[property] !== value) control[property] = value;
}

/** Makes the desk's own controls show the state of the Mac. */
export function showDesk(facts) {
  lastFacts = facts;
  for (const control of document.querySelectorAll('[data-fact]')) {
    setUnlessUsed(control, 'checked', Boolean(facts[control.dataset.fact]));
  }
  setUnlessUsed(byID('notch'), 'checked', facts.notch);
  setUnlessUsed(byID('second'), 'checked', facts.displays > 1);
  setUnlessUsed(byID('engine'), 'value', facts.engine);
  setUnlessUsed(byID('speed'), 'value', String(facts.speed));
  for (const button of document.querySelectorAll('[data-needs]')) {
    button.disabled = (button.dataset.needs === 'running') !== facts.velko;
  }
  byID('jump').hidden = facts.jumpLeft === 0;
  if (facts.jumpLeft > 0) byID('jump-text').textContent = `Time flies: ${durationText(facts.jumpLeft)} left`;
  showApp();
}
