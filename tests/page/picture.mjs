// node picture.mjs PAGE PICTURE WIDTH HEIGHT: a picture of a page of fldtool page, as Chromium shows it.
import { resolve } from 'node:path';

import { launch, PATIENCE, settled } from './browser.mjs';

const [file, path, width, height] = process.argv.slice(2);
const browser = await launch();
const page = await browser.newPage({ viewport: { width: Number(width), height: Number(height) } });
page.setDefaultTimeout(PATIENCE);
await page.goto(`file://${resolve(file)}`);
await settled(page);
await page.screenshot({ path });
await browser.close();
