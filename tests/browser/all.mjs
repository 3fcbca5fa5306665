// Every test, in one process: one browser serves them all, and they don't disturb each other's clocks.

import './setup.test.mjs';
import './broom.test.mjs';
import './note.test.mjs';
import './settings.test.mjs';
import './page.test.mjs';
import './speed.test.mjs';
