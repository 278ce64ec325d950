// The "save picture" button's file.

import { find, make } from './dom.js';

const RATIO = 2; // pixels per CSS pixel

// A PNG file of what the viewer shows with what lies over it and a title. `drawOver` draws into a context of CSS pixels.
export function savePicture(viewer, { title, ink, name, drawOver }) {
  const view = find('view');
  const picture = make('canvas', {});
  viewer.withPixels(RATIO, (drawn) => {
    picture.width = drawn.width;
    picture.height = drawn.height;
    picture.getContext('2d').drawImage(drawn, 0, 0);
  });
  const context = picture.getContext('2d');
  const ratio = picture.width / view.clientWidth;
  const over = make('canvas', { width: picture.width, height: picture.height });
  const overContext = over.getContext('2d');
  overContext.scale(ratio, ratio);
  drawOver(overContext, view.clientWidth, view.clientHeight);
  context.drawImage(over, 0, 0);
  context.scale(ratio, ratio);
  context.fillStyle = ink;
  context.font = `600 14px ${getComputedStyle(document.body).fontFamily}`;
  context.fillText(title, 16, 26, view.clientWidth - 32);
  picture.toBlob((blob) => {
    const link = make('a', { href: URL.createObjectURL(blob), download: name });
    link.click();
    setTimeout(() => URL.revokeObjectURL(link.href), 10000);
  });
}
