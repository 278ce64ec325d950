// Finds what lies under a place of the picture.

import { placesOf } from './mesh.js';
import { dot } from './viewer.js';

// Parts that are fainter than this are looked through.
const FAINTEST = 0.3;

// The nearest face under (x, y), in CSS pixels of the container, as { part, face, point, place }: the face's corner next
// to the place, and the place itself. Null where there is none. What is cut away does not count.
export function pick(viewer, x, y) {
  const { right, up, from } = viewer.axes();
  const focal = viewer.camera.getFocalPoint();
  const perPixel = (2 * viewer.camera.getParallelScale()) / viewer.container.clientHeight;
  const h = (x - viewer.container.clientWidth / 2) * perPixel + dot(focal, right);
  const v = (viewer.container.clientHeight / 2 - y) * perPixel + dot(focal, up);
  let best = null;
  viewer.parts.forEach((part, number) => {
    if (!part.isShown || part.opacity < FAINTEST) return;
    const hit = nearest(part, right, up, from, h, v, best ? best.depth : -Infinity, viewer);
    if (hit) best = { part: number, ...hit };
  });
  return best;
}

function nearest(part, right, up, from, h, v, depthSoFar, viewer) {
  const { mesh, surface } = part;
  const places = placesOf(mesh.vertexPoints, surface.points);
  const count = places.length / 3;
  const hs = new Float64Array(count);
  const vs = new Float64Array(count);
  for (let i = 0; i < count; ++i) {
    const px = places[3 * i];
    const py = places[3 * i + 1];
    const pz = places[3 * i + 2];
    hs[i] = px * right[0] + py * right[1] + pz * right[2] - h;
    vs[i] = px * up[0] + py * up[1] + pz * up[2] - v;
  }
  let found = null;
  let depth = depthSoFar;
  const { vertices, faces } = mesh.triangles;
  for (let t = 0; t < faces.length; ++t) {
    const a = vertices[3 * t];
    const b = vertices[3 * t + 1];
    const c = vertices[3 * t + 2];
    // Twice the areas of the triangles that the place forms with the sides.
    const wa = hs[b] * vs[c] - hs[c] * vs[b];
    const wb = hs[c] * vs[a] - hs[a] * vs[c];
    const wc = hs[a] * vs[b] - hs[b] * vs[a];
    if (!((wa >= 0 && wb >= 0 && wc >= 0) || (wa <= 0 && wb <= 0 && wc <= 0))) continue;
    const sum = wa + wb + wc;
    if (sum === 0) continue;
    const place = [0, 1, 2].map(
      (k) => (wa * places[3 * a + k] + wb * places[3 * b + k] + wc * places[3 * c + k]) / sum,
    );
    const towards = dot(place, from);
    if (towards <= depth || viewer.isClipped(place)) continue;
    depth = towards;
    found = { face: faces[t], place, depth };
  }
  if (!found) return null;
  return { ...found, point: nearestCorner(surface, found.face, found.place) };
}

function nearestCorner({ faces, points }, face, place) {
  let best = -1;
  let distance = Infinity;
  for (let i = faces.starts[face]; i < faces.starts[face + 1]; ++i) {
    const p = 3 * faces.corners[i];
    const d = Math.hypot(points[p] - place[0], points[p + 1] - place[1], points[p + 2] - place[2]);
    if (d < distance) {
      distance = d;
      best = faces.corners[i];
    }
  }
  return best;
}
