// The control desk. Most of it posts lines of the scenario language.

import { post, tell } from '/link.js';

const root = document.documentElement;
const byID = (id) => document.getElementById(id);
const day = 86_400_000;

// Lines

const quoted = (text) => `"${text.replace(/[\\"]/g, '\\$&')}"`;
const chosenApp = () => document.querySelector('[name="desk-app"]:checked');

async function play(lines) {
  for (const line of lines.split('|')) {
    if (!(await post('desk', { line }))) return;
  }
}

function playOnApp(lines) {
  const app = chosenApp();
  if (app) play(lines.replaceAll('$APP', app.value));
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
  playOnApp(lines.replace('$TEXT', () => (field.type === 'number' ? field.value : quoted(field.value))));
});

byID('hundred').addEventListener('click', async () => {
  const running = document.querySelectorAll('[name="desk-app"][data-running]').length;
  for (let number = running; number < 100; number += 1) await post('desk', { line: `launch com.example.app${number}` });
});

// Switches

document.addEventListener('change', (event) => {
  const control = event.target;
  if (control.dataset.fact) play(control.checked ? control.dataset.on : control.dataset.off);
  if (control.name === 'desk-app') showApp();
  if (control.name === 'theme') chooseTheme(control.value);
});

byID('speed').addEventListener('change', (event) => post('pace', { speed: Number(event.target.value) }));
byID('jump-stop').addEventListener('click', () => post('pace', { stop: true }));
byID('engine').addEventListener('change', async (event) => {
  const line = event.target.selectedOptions[0].dataset.line;
  await play(line === 'engine recover' ? line : `engine recover|${line}`);
});

function arrange() {
  const first = byID('notch').checked ? 'laptop' : 'desk';
  play(`displays ${first}${byID('second').checked ? (first === 'laptop' ? '+desk' : '+laptop') : ''}`);
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

// What to watch

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

// What the program says

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
  if (control[property] !== value) control[property] = value;
}

/** Brings the desk's own controls in line with the Mac. */
export function showDesk(facts) {
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
