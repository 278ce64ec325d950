// The pages of fldtool page in Chromium, from files and without a network. scripts/test runs it:
//
//   FLDTOOL=build/release/bin/fldtool PAGE_DATASETS=build/release/bin/page_datasets FLD_TEST_MODULES=.../node_modules
//   node --test tests/page/page_test.mjs
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { after, before, test } from 'node:test';

import { launch, PATIENCE, PNG, settled } from './browser.mjs';

const { FLDTOOL = 'build/release/bin/fldtool', PAGE_DATASETS = 'build/release/bin/page_datasets' } = process.env;

const folder = mkdtempSync(join(tmpdir(), 'fld-page-'));
const tank = join(folder, 'tank/tank_0.fld');
const channel = join(folder, 'channel/channel.fld');
const overset = join(folder, 'overset/overset.fld');
let browser;

function fldtool(...words) {
  return execFileSync(FLDTOOL, words, { encoding: 'utf8', maxBuffer: 1 << 28 });
}

before(async () => {
  fldtool('sample', folder);
  execFileSync(PAGE_DATASETS, [folder]);
  browser = await launch();
});

after(async () => {
  await browser?.close();
  rmSync(folder, { recursive: true });
});

// The page of a dataset in a window of its own. `complaints` has what the console said and every request but that of the
// page itself.
async function open(name, words, window = {}) {
  const file = join(folder, `${name}.html`);
  fldtool('page', words[0], file, ...words.slice(1));
  const context = await browser.newContext({ offline: true, viewport: { width: 1200, height: 900 }, ...window });
  context.setDefaultTimeout(PATIENCE);
  const page = await context.newPage();
  const complaints = [];
  page.on('console', (message) => {
    // The driver of the test's own screenshots is no concern of the page.
    if (!message.text().includes('ReadPixels')) complaints.push(message.text());
  });
  page.on('pageerror', (error) => complaints.push(String(error)));
  page.on('request', (request) => {
    if (request.url() !== `file://${file}`) complaints.push(request.url());
  });
  await page.goto(`file://${file}`);
  await settled(page);
  return { page, complaints, close: () => context.close() };
}

async function screenshot(page, selector) {
  return PNG.sync.read(await page.locator(selector).screenshot());
}

function pixel(picture, x, y) {
  const at = 4 * (Math.round(y) * picture.width + Math.round(x));
  return [...picture.data.subarray(at, at + 3)];
}

function distance(a, b) {
  return Math.max(...a.map((c, i) => Math.abs(c - b[i])));
}

// The box around what is not background within [from, to) of the picture's height: { left, right, top, bottom }.
function boxOf(picture, from, to) {
  const box = { left: Infinity, right: -1, top: Infinity, bottom: -1 };
  for (let y = Math.floor(from * picture.height); y < to * picture.height; ++y) {
    for (let x = 0; x < picture.width; ++x) {
      if (distance(pixel(picture, x, y), [255, 255, 255]) < 40) continue;
      box.left = Math.min(box.left, x);
      box.right = Math.max(box.right, x);
      box.top = Math.min(box.top, y);
      box.bottom = Math.max(box.bottom, y);
    }
  }
  return box;
}

// Where the middle of a part of the picture is, so that a click meets something.
async function middle(page) {
  const box = await page.locator('#view').boundingBox();
  return [box.x + box.width / 2, box.y + box.height / 2];
}

async function cardTerms(page) {
  return page.evaluate(() => {
    const list = [...document.querySelectorAll('#card-values dt')];
    return Object.fromEntries(list.map((term) => [term.textContent, term.nextElementSibling.textContent]));
  });
}

async function goTo(page, step) {
  await page.evaluate((value) => {
    const slider = document.getElementById('step');
    slider.value = value;
    slider.dispatchEvent(new Event('input'));
  }, step);
  await settled(page, `[data-step="${step}"]`);
}

test('a page loads from a file without a network and without a complaint', async () => {
  const { page, complaints, close } = await open('tank', [tank]);
  assert.equal(await page.title(), 'tank_0.fld');
  assert.equal(await page.locator('#tree .part').count(), 17);
  assert.match(await page.locator('#licences').textContent(), /@kitware\/vtk\.js [0-9.]+, BSD-3-Clause\n\n.*Copyright/s);
  await goTo(page, 3);
  assert.match(await page.locator('#step-label').textContent(), /^Step 3, t = /);
  assert.deepEqual(complaints, []);
  await close();
});

// Same parts, view and variable; both pictures are brought to the box around what they show, and compared in a grid of
// places. Lines and borders differ by their widths, so a tenth of the places may.
for (const [name, file, options] of [
  ['channel', () => channel, ['--variable', 'Velocity', '--parts', 'inlet,outlet,obstacle,floor', '--view', '-50,30']],
  ['tank', () => tank, ['--steps', '3', '--variable', 'Pressure', '--parts', 'tank_wall,tank_bottom', '--view', '30,20']],
  ['overset', () => overset, ['--variable', 'Pressure', '--colours', 'inferno']],
  ['parts', () => channel, ['--variable', 'none', '--view', '+z']],
]) {
  test(`a page looks like the picture of fldtool render: ${name}`, async () => {
    const { page, close } = await open(`compared-${name}`, [file(), ...options]);
    await page.evaluate(() => {
      for (const id of ['overlay', 'views', 'time']) document.getElementById(id).style.display = 'none';
    });
    await settled(page);
    const shown = await screenshot(page, '#view');
    const path = join(folder, `${name}.png`);
    fldtool('render', file(), '--output', path, '--title', '', '--size', '1200x900', ...options);
    const wanted = PNG.sync.read(readFileSync(path));
    const a = boxOf(shown, 0, 1);
    const b = boxOf(wanted, 0, 0.81);
    const shape = (box) => (box.right - box.left) / (box.bottom - box.top);
    assert.ok(Math.abs(shape(a) / shape(b) - 1) < 0.02, `shapes ${shape(a)} and ${shape(b)}`);
    let places = 0;
    let like = 0;
    for (let i = 1; i < 60; ++i) {
      for (let j = 1; j < 60; ++j) {
        const at = (box) => [box.left + (i / 60) * (box.right - box.left), box.top + (j / 60) * (box.bottom - box.top)];
        const wantedColour = pixel(wanted, ...at(b));
        if (distance(wantedColour, [255, 255, 255]) < 3) continue;
        ++places;
        if (distance(pixel(shown, ...at(a)), wantedColour) <= 16) ++like;
      }
    }
    assert.ok(places > 500, `${places} places`);
    assert.ok(like >= 0.9 * places, `${like} of ${places} places are alike`);
    await close();
  });
}

test('a click tells what fldtool values tells of the node', async () => {
  const words = ['--parts', 'outlet', '--variable', 'Velocity', '--view', '+x', '--precision', 'full'];
  const { page, close } = await open('clicked', [channel, ...words]);
  await page.mouse.click(...(await middle(page)));
  const terms = await cardTerms(page);
  assert.equal(await page.locator('#card-title').textContent(), 'outlet');
  const row = fldtool('values', channel, '--part', 'outlet', '--variable', 'Velocity', '--rows', `${terms.Node}-${terms.Node}`)
    .trim()
    .split('\n')[1]
    .split(',');
  assert.equal(row[0], terms.Node);
  const told = [terms.x, terms.y, terms.z, ...['x', 'y', 'z'].map((c) => terms[`Velocity ${c}`].replace(' m/s', ''))];
  row.slice(1).forEach((text, i) => {
    assert.ok(Math.abs(Number(text) - Number(told[i])) <= 1e-6 * Math.abs(Number(text)), `${text} and ${told[i]}`);
  });
  assert.equal(terms.Part, '4');
  await page.keyboard.press('Escape');
  assert.ok(await page.locator('#card').isHidden());
  await close();
});

test('the time slider moves the impeller and its values', async () => {
  const words = ['--parts', 'blade_*,disc,hub', '--variable', 'Velocity.x', '--precision', 'full', '--view', '+z'];
  const { page, close } = await open('time', [tank, ...words]);
  const first = (await screenshot(page, '#view')).data;
  await goTo(page, 1);
  const second = (await screenshot(page, '#view')).data;
  assert.ok(Buffer.compare(first, second) !== 0);
  await goTo(page, 6);
  await page.mouse.click(...(await middle(page)));
  const terms = await cardTerms(page);
  const part = await page.locator('#card-title').textContent();
  const row = fldtool('values', tank, '--step', '6', '--part', part, '--variable', 'Velocity', '--rows', `${terms.Node}-${terms.Node}`)
    .trim()
    .split('\n')[1]
    .split(',')
    .map(Number);
  // Coordinates of a part that moves rigidly are those of the first step, moved.
  ['x', 'y', 'z'].forEach((axis, i) => assert.ok(Math.abs(row[1 + i] - Number(terms[axis])) < 1e-6));
  assert.ok(Math.abs(row[4] - parseFloat(terms['Velocity x'])) <= 1e-6);
  await page.keyboard.press('ArrowRight');
  await settled(page, '[data-step="7"]');
  assert.match(await page.locator('#step-label').textContent(), /^Step 7, /);
  await close();
});

test('parts can be switched off and made faint', async () => {
  const { page, close } = await open('parts', [tank, '--variable', 'Pressure', '--steps', '0']);
  const all = await screenshot(page, '#view');
  const wall = page.locator('#tree .part', { hasText: 'tank_wall' });
  await wall.locator('input[type=checkbox]').first().uncheck();
  await settled(page);
  const without = await screenshot(page, '#view');
  const place = [all.width / 2 - 200, all.height / 2];
  assert.ok(distance(pixel(all, ...place), pixel(without, ...place)) > 20);

  await wall.locator('input[type=checkbox]').first().check();
  await wall.locator('button').click();
  await wall.locator('input[type=range]').fill('50');
  await settled(page);
  const faint = pixel(await screenshot(page, '#view'), ...place);
  assert.ok(distance(pixel(all, ...place), faint) > 5 && distance(pixel(without, ...place), faint) > 5, String(faint));

  const folderBox = page.locator('#tree .folder > .row input').first();
  assert.equal(await folderBox.evaluate((element) => element.indeterminate), true);
  await folderBox.check();
  await folderBox.uncheck();
  await settled(page);
  assert.equal(boxOf(await screenshot(page, '#view'), 0.15, 0.85).right, -1);
  await close();
});

test('the groups of the reader are folders', async () => {
  const { page, close } = await open('groups', [channel]);
  const folders = await page.locator('#tree .folder > .row .name').allTextContents();
  assert.deepEqual(folders, ['Surfaces', 'Grouping_Regions', 'Undefined_Regions']);
  await page.locator('#tree .folder > .row button').first().click();
  assert.ok(await page.locator('#tree .part').first().isHidden());
  await close();
});

test('keys move the view, the step and the clipping plane', async () => {
  const { page, complaints, close } = await open('keys', [tank, '--variable', 'Pressure', '--steps', '2-4']);
  const pictures = [];
  for (const key of ['x', 'Shift+X', 'z', 'i', 'e', 'c', 'c']) {
    await page.keyboard.press(key);
    await settled(page);
    const picture = (await screenshot(page, '#view')).data;
    assert.ok(pictures.every((other) => Buffer.compare(other, picture) !== 0), key);
    pictures.push(picture);
  }
  assert.equal(await page.locator('#clip-axis').inputValue(), '1');
  await page.keyboard.press('ArrowLeft');
  await settled(page, '[data-step="4"]');
  await page.keyboard.press('Space');
  await page.locator('body.playing').waitFor();
  await page.locator('html[data-step="2"]').waitFor();
  await page.locator('html[data-step="3"]').waitFor();
  await page.keyboard.press('Space');
  assert.equal(await page.locator('body.playing').count(), 0);
  assert.deepEqual(complaints, []);
  await close();
});

test('axes have the names of cylindrical coordinates where these are shown', async () => {
  const file = join(folder, 'cylindrical.fld');
  const { page, close } = await open('cylindrical', [file, '--parts', 'wall,whole', '--variable', 'none']);
  const names = async () => (await page.locator('#views button').allTextContents()).slice(0, 3);
  assert.deepEqual(await names(), ['x', 'y', 'z']);
  await page.locator('#tree .part', { hasText: 'wall' }).locator('input[type=checkbox]').first().uncheck();
  await settled(page);
  assert.deepEqual(await names(), ['r', 'theta', 'z']);
  assert.deepEqual(await page.locator('#clip-axis option').allTextContents(), ['Off', 'Across r', 'Across theta', 'Across z']);
  await page.mouse.click(...(await middle(page)));
  assert.deepEqual(Object.keys(await cardTerms(page)).slice(-3), ['r', 'theta', 'z']);
  await close();
});

test('range, edges and the clipping plane change the picture', async () => {
  const { page, complaints, close } = await open('controls', [channel, '--slice', 'z']);
  const pictures = [(await screenshot(page, '#view')).data];
  const changed = async () => {
    await settled(page);
    const picture = (await screenshot(page, '#view')).data;
    assert.ok(pictures.every((other) => Buffer.compare(other, picture) !== 0));
    pictures.push(picture);
  };
  await page.locator('#high').fill('0');
  await page.locator('#high').press('Enter');
  await changed();
  await page.locator('#high').fill('-500');
  await page.locator('#high').press('Enter');
  assert.equal(await page.locator('#high').getAttribute('aria-invalid'), 'true');
  await page.locator('#auto').click();
  assert.equal(await page.locator('#high').getAttribute('aria-invalid'), 'false');
  await page.locator('#edges').check();
  await changed();
  await page.locator('#clip-axis').selectOption('0');
  await changed();
  await page.locator('#clip-flip').check();
  await changed();
  await page.locator('#map').selectOption('2');
  await changed();
  await page.locator('#variable').selectOption({ index: 4 }); // the material of each element
  await changed();
  await page.locator('#variable').selectOption('');
  await changed();
  assert.deepEqual(complaints, []);
  await close();
});

test('a saved picture is a PNG file of the view', async () => {
  const { page, close } = await open('saved', [channel]);
  const [download] = await Promise.all([page.waitForEvent('download'), page.locator('#save').click()]);
  assert.equal(download.suggestedFilename(), 'channel_0.png');
  const picture = PNG.sync.read(readFileSync(await download.path()));
  const view = await page.locator('#view').evaluate(({ clientWidth, clientHeight }) => [clientWidth, clientHeight]);
  assert.deepEqual([picture.width, picture.height], view.map((length) => 2 * length));
  assert.ok(boxOf(picture, 0.2, 0.8).right > picture.width / 2);
  await close();
});

test('a phone has room for the picture, and a tap looks up a value', async () => {
  const phone = { viewport: { width: 360, height: 740 }, hasTouch: true, isMobile: true, deviceScaleFactor: 2 };
  const { page, complaints, close } = await open('phone', [tank], phone);
  assert.ok(await page.evaluate(() => document.documentElement.scrollWidth <= window.innerWidth));
  assert.ok(await page.locator('#panel').isHidden());
  const view = await page.locator('#view').boundingBox();
  assert.equal(view.width, 360);
  assert.ok(view.height > 500);
  await page.touchscreen.tap(...(await middle(page)));
  assert.ok(await page.locator('#card').isVisible());
  await page.locator('#panel-toggle').tap();
  assert.ok(await page.locator('#panel').isVisible());
  assert.deepEqual(complaints, []);
  await close();
});

test('the dark page is dark', async () => {
  const { page, close } = await open('dark', [channel], { colorScheme: 'dark' });
  const picture = await screenshot(page, '#view');
  assert.ok(Math.max(...pixel(picture, 5, picture.height / 2)) < 60);
  await page.emulateMedia({ colorScheme: 'light' });
  await settled(page, '[data-theme=light]');
  assert.ok(Math.min(...pixel(await screenshot(page, '#view'), 5, picture.height / 2)) > 240);
  await close();
});

test('a picture fits a phone that is turned', async () => {
  const { page, close } = await open('turned', [channel, '--variable', 'none'], { viewport: { width: 740, height: 360 } });
  await page.setViewportSize({ width: 360, height: 740 });
  await page.locator('#overlay[width="360"]').waitFor({ state: 'attached' });
  await settled(page);
  const box = boxOf(await screenshot(page, '#view'), 0.25, 0.8);
  assert.ok(box.left > 5 && box.right < 354, `from ${box.left} to ${box.right}`);
  assert.ok(box.right - box.left > 250, `from ${box.left} to ${box.right}`);
  await close();
});

test('two fingers zoom and one turns', async () => {
  const phone = { viewport: { width: 360, height: 740 }, hasTouch: true, isMobile: true };
  const { page, close } = await open('touch', [channel, '--variable', 'none'], phone);
  const client = await page.context().newCDPSession(page);
  const touch = (type, ...places) =>
    client.send('Input.dispatchTouchEvent', { type, touchPoints: places.map(([x, y], id) => ({ x, y, id })) });
  const width = async () => {
    await settled(page);
    const box = boxOf(await screenshot(page, '#view'), 0.25, 0.8);
    return box.right - box.left;
  };
  const before = await width();
  await touch('touchStart', [80, 400], [280, 400]);
  for (const reach of [90, 80, 70, 60, 50]) await touch('touchMove', [180 - reach, 400], [180 + reach, 400]);
  await touch('touchEnd');
  const zoomed = await width();
  assert.ok(zoomed < 0.8 * before, `${zoomed} of ${before}`);
  await touch('touchStart', [180, 400]);
  for (const x of [200, 220, 240, 260, 280]) await touch('touchMove', [x, 400]);
  await touch('touchEnd');
  assert.notEqual(await width(), zoomed);
  await close();
});

test('names that are markup or script stay names', async () => {
  const title = '</title><script>window.broken=1</script>\u2028';
  const words = ['--parts', 'all', '--title', title];
  const { page, complaints, close } = await open('hostile', [join(folder, 'hostile.fld'), ...words]);
  assert.equal(await page.evaluate(() => window.broken), undefined);
  assert.equal(await page.locator('#title').evaluate((element) => element.textContent), title);
  const names = await page.locator('#tree .part .name').allTextContents();
  assert.ok(names.includes('<script>window.broken=1</script>'), String(names));
  assert.ok(names.includes('<img src=x onerror=window.broken=1>'));
  const variables = await page.locator('#variable option').allTextContents();
  assert.ok(variables.includes('</script><b>"\'& \u2013 <!--<script> [</script>]'), String(variables));
  const about = await page.locator('#about dd').allTextContents();
  for (const item of ['Application version 1', 'Date', 'Comments']) assert.ok(about.includes(`</script><b>${item}`), String(about));
  let cards = '';
  for (let variable = 1; variable < variables.length; ++variable) {
    await page.locator('#variable').selectOption({ index: variable });
    await settled(page);
    await page.mouse.click(...(await middle(page)));
    cards += await page.locator('#card').textContent();
  }
  for (const text of ['<script>window.broken=1</script>', '</script><b>"\'&', '1 </script>', '1 "><b>']) assert.ok(cards.includes(text), cards);
  assert.equal(await page.locator('img, b').count(), 0);
  assert.equal(await page.evaluate(() => window.broken), undefined);
  assert.deepEqual(complaints, []);
  await close();
});

test('a file name that is markup stays a name', async () => {
  const name = '<b>\'"&--><script>.fld';
  const { page, complaints, close } = await open('named', [join(folder, name)]);
  assert.equal(await page.title(), name);
  assert.equal(await page.locator('#title').textContent(), name);
  assert.equal(await page.locator('b').count(), 0);
  const [download] = await Promise.all([page.waitForEvent('download'), page.locator('#save').click()]);
  assert.ok(download.suggestedFilename().endsWith('_0.png'), download.suggestedFilename());
  assert.deepEqual(complaints, []);
  await close();
});

test('a page with damaged data says so', async () => {
  const file = join(folder, 'damaged.html');
  fldtool('page', channel, file);
  writeFileSync(file, readFileSync(file, 'utf8').replace(/class="chunk">.{40}/, 'class="chunk">'));
  const page = await browser.newPage();
  page.setDefaultTimeout(PATIENCE);
  await page.goto(`file://${file}`);
  await page.locator('html[data-state=failed]').waitFor();
  assert.match(await page.locator('#message').textContent(), /^The page cannot be shown: /);
  await page.close();
});

test('the policy lets no other script, style or request through', async () => {
  const { page, complaints, close } = await open('policy', [channel]);
  const refused = await page.evaluate(async () => {
    const script = document.createElement('script');
    script.textContent = 'window.broken = 1';
    document.body.append(script);
    const answer = await fetch('data:text/plain,x').then(
      () => 'answered',
      () => 'refused',
    );
    return [window.broken, answer];
  });
  assert.deepEqual(refused, [undefined, 'refused']);
  assert.ok(complaints.some((text) => text.includes('Content Security Policy')));
  await close();
});
