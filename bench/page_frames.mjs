// How long Chromium takes to show a page of fldtool page, and each of its steps:
//
//   FLD_TEST_MODULES=.../node_modules node bench/page_frames.mjs PAGE...
//
// The first frame counts from the opening of the file. A step counts from the slider's event until its pixels are there;
// printed are the median of two rounds, and the largest.
import { resolve } from 'node:path';

import { launch, PATIENCE, settled } from '../tests/page/browser.mjs';

const PAUSE = 150; // ms from a step to the next, as when the slider is dragged: no picture comes to rest

async function measureSteps(pause) {
  const slider = document.getElementById('step');
  const gl = document.querySelector('#view canvas').getContext('webgl2');
  const count = Number(slider.max) + 1;
  const next = () => new Promise((go) => {
    const { port1, port2 } = new MessageChannel();
    port1.onmessage = go;
    port2.postMessage(null);
  });
  const times = [];
  for (let i = 1; count > 1 && i <= 2 * count; ++i) {
    await new Promise((go) => setTimeout(go, pause));
    const start = performance.now();
    performance.clearMarks('drawn');
    slider.value = i % count;
    slider.dispatchEvent(new Event('input'));
    while (performance.getEntriesByName('drawn').length === 0) await next();
    gl.readPixels(0, 0, 1, 1, gl.RGBA, gl.UNSIGNED_BYTE, new Uint8Array(4)); // waits for the picture
    times.push(performance.now() - start);
  }
  return times.sort((a, b) => a - b);
}

for (const file of process.argv.slice(2)) {
  const browser = await launch();
  const page = await browser.newPage({ viewport: { width: 1200, height: 900 } });
  page.setDefaultTimeout(PATIENCE);
  await page.addInitScript(() => {
    addEventListener('DOMContentLoaded', () => {
      new PerformanceObserver((list, observer) => {
        window.firstFrame = list.getEntries()[0].startTime;
        observer.disconnect();
      }).observe({ type: 'mark' });
    });
  });
  await page.goto(`file://${resolve(file)}`);
  await settled(page);
  const first = await page.evaluate(() => window.firstFrame);
  const steps = await page.evaluate(measureSteps, PAUSE);
  const told = steps.length === 0 ? '' : `, steps ${Math.round(steps[steps.length / 2])} ms (at most ${Math.round(steps.at(-1))})`;
  console.log(`${file}: first frame ${Math.round(first)} ms${told}`);
  await browser.close();
}
