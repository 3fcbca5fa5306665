// All tests in one process: one browser serves them all, and none slows down another.

import './setup.test.mjs';
import './broom.test.mjs';
import './note.test.mjs';
import './shelf.test.mjs';
import './settings.test.mjs';
import './search.test.mjs';
import './page.test.mjs';
import './surfaces.test.mjs';
import './speed.test.mjs';
