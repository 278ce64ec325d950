// Debian's Chromium without a display, for page_test.mjs and picture.mjs. FLD_TEST_MODULES is the folder with the modules of
// package-lock.json, CHROMIUM the program.
import assert from 'node:assert/strict';
import { createRequire } from 'node:module';
import { join, resolve } from 'node:path';

const { FLD_TEST_MODULES = 'build/page-tests/node_modules', CHROMIUM = '/usr/bin/chromium' } = process.env;
const require = createRequire(join(resolve(FLD_TEST_MODULES), 'here.js'));
const { chromium } = require('playwright-core');
export const { PNG } = require('pngjs');

// How long a page may say nothing, in ms. Only a test that fails takes so long: a busy machine is not what is tested.
export const PATIENCE = 600000;

export function launch() {
  return chromium.launch({
    timeout: PATIENCE,
    executablePath: CHROMIUM,
    headless: true,
    args: [
      '--no-sandbox',
      '--enable-unsafe-swiftshader',
      '--disable-gpu',
      '--disable-quic',
      '--no-first-run',
      '--disable-background-networking',
      '--disable-component-update',
      '--disable-sync',
    ],
  });
}

// Waits until the page says that its picture is the one that stays; `state` has more that it has to say.
export async function settled(page, state = '') {
  await page.locator(`html[data-state=failed], html[data-state=ready]${state}`).waitFor({ state: 'attached' });
  assert.equal(await page.locator('html').getAttribute('data-state'), 'ready', await page.locator('#message').textContent());
}
