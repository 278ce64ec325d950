// Makes triangles with normals out of faces: round where a surface is curved, sharp at its edges. And the lines along
// the elements' edges, and along borders and sharp edges.

const SHARP = Math.cos((35 * Math.PI) / 180); // of the angle between faces with an edge to be seen

// What can be drawn of faces. `vertexPoints` and `vertexFaces` tell for each vertex the point and the face that it belongs
// to. With `isFlat` no two faces share a vertex, so that each can have a colour of its own.
export function makeMesh(faces, points, isFlat) {
  const { starts, corners } = faces;
  const faceCount = starts.length - 1;
  const normals = faceNormals(faces, points);
  const cornerFaces = new Uint32Array(corners.length);
  for (let face = 0; face < faceCount; ++face) cornerFaces.fill(face, starts[face], starts[face + 1]);
  const around = cornersAround(corners, points.length / 3);
  const edges = findEdges(faces, cornerFaces, around, normals);
  const vertices = splitVertices(faces, cornerFaces, around, normals, isFlat);
  return {
    triangles: makeTriangles(faces, vertices.cornerVertices, points),
    vertexPoints: vertices.vertexPoints,
    vertexFaces: vertices.vertexFaces,
    edges: edges.all,
    outline: edges.outline,
    cornerFaces,
    cornerVertices: vertices.cornerVertices,
  };
}

// The places of the vertices, x, y and z of each.
export function placesOf(vertexPoints, points) {
  const places = new Float32Array(3 * vertexPoints.length);
  for (let i = 0; i < vertexPoints.length; ++i) {
    const from = 3 * vertexPoints[i];
    places[3 * i] = points[from];
    places[3 * i + 1] = points[from + 1];
    places[3 * i + 2] = points[from + 2];
  }
  return places;
}

// Three numbers per face: Newell's normal, of length 1; zeros for faces without an area.
export function faceNormals({ starts, corners }, points) {
  const normals = new Float32Array(3 * (starts.length - 1));
  for (let face = 0; face + 1 < starts.length; ++face) {
    let x = 0;
    let y = 0;
    let z = 0;
    let a = 3 * corners[starts[face + 1] - 1];
    for (let i = starts[face]; i < starts[face + 1]; ++i) {
      const b = 3 * corners[i];
      x += (points[a + 1] - points[b + 1]) * (points[a + 2] + points[b + 2]);
      y += (points[a + 2] - points[b + 2]) * (points[a] + points[b]);
      z += (points[a] - points[b]) * (points[a + 1] + points[b + 1]);
      a = b;
    }
    const length = Math.hypot(x, y, z);
    if (!(length > 0)) continue;
    normals[3 * face] = x / length;
    normals[3 * face + 1] = y / length;
    normals[3 * face + 2] = z / length;
  }
  return normals;
}

// The normals of the vertices: the mean of their faces', which vertices of the same mesh share.
export function vertexNormals(mesh, normals) {
  const { cornerFaces, cornerVertices, vertexPoints } = mesh;
  const sums = new Float32Array(3 * vertexPoints.length);
  for (let corner = 0; corner < cornerVertices.length; ++corner) {
    const to = 3 * cornerVertices[corner];
    const from = 3 * cornerFaces[corner];
    sums[to] += normals[from];
    sums[to + 1] += normals[from + 1];
    sums[to + 2] += normals[from + 2];
  }
  for (let i = 0; i < sums.length; i += 3) {
    const length = Math.hypot(sums[i], sums[i + 1], sums[i + 2]);
    if (length > 0) {
      sums[i] /= length;
      sums[i + 1] /= length;
      sums[i + 2] /= length;
    } else {
      sums[i + 2] = 1;
    }
  }
  return sums;
}

// The corners at each point: those of point p are list[first[p]] to list[first[p + 1] - 1].
function cornersAround(corners, pointCount) {
  const first = new Uint32Array(pointCount + 1);
  for (let i = 0; i < corners.length; ++i) ++first[corners[i] + 1];
  for (let p = 0; p < pointCount; ++p) first[p + 1] += first[p];
  const next = first.slice(0, pointCount);
  const list = new Uint32Array(corners.length);
  for (let i = 0; i < corners.length; ++i) list[next[corners[i]]++] = i;
  return { first, list };
}

function cosine(normals, a, b) {
  return (
    normals[3 * a] * normals[3 * b] + normals[3 * a + 1] * normals[3 * b + 1] + normals[3 * a + 2] * normals[3 * b + 2]
  );
}

// Pairs of points, each edge once.
function findEdges({ starts, corners }, cornerFaces, { first, list }, normals) {
  const all = new Uint32Array(2 * corners.length);
  const outline = [];
  let count = 0;
  for (let corner = 0; corner < corners.length; ++corner) {
    const face = cornerFaces[corner];
    const end = corner + 1 === starts[face + 1] ? starts[face] : corner + 1;
    const a = corners[corner];
    const b = corners[end];
    // The edge is this corner's unless a corner before it has it too.
    let isFirst = true;
    let other = -1;
    for (const point of [a, b]) {
      for (let k = first[point]; k < first[point + 1]; ++k) {
        const candidate = list[k];
        if (candidate === corner) continue;
        const otherFace = cornerFaces[candidate];
        const otherEnd = candidate + 1 === starts[otherFace + 1] ? starts[otherFace] : candidate + 1;
        const p = corners[candidate];
        const q = corners[otherEnd];
        if (!((p === a && q === b) || (p === b && q === a))) continue;
        if (candidate < corner) isFirst = false;
        other = otherFace;
      }
    }
    if (!isFirst) continue;
    all[count++] = a;
    all[count++] = b;
    if (other < 0 || cosine(normals, face, other) < SHARP) outline.push(a, b);
  }
  return { all: all.slice(0, count), outline: Uint32Array.from(outline) };
}

// One vertex per point and side of the sharp edges there.
function splitVertices({ starts, corners }, cornerFaces, { first, list }, normals, isFlat) {
  const cornerVertices = new Uint32Array(corners.length);
  const vertexPoints = [];
  const vertexFaces = [];
  const add = (corner) => {
    vertexPoints.push(corners[corner]);
    vertexFaces.push(cornerFaces[corner]);
    return vertexPoints.length - 1;
  };
  if (isFlat) {
    for (let corner = 0; corner < corners.length; ++corner) cornerVertices[corner] = add(corner);
  } else {
    const before = (corner) => corners[corner === starts[cornerFaces[corner]] ? starts[cornerFaces[corner] + 1] - 1 : corner - 1];
    const after = (corner) => corners[corner + 1 === starts[cornerFaces[corner] + 1] ? starts[cornerFaces[corner]] : corner + 1];
    for (let point = 0; point + 1 < first.length; ++point) {
      const from = first[point];
      const to = first[point + 1];
      // Corners whose faces meet at an edge that is not sharp have one vertex.
      const group = [];
      for (let k = from; k < to; ++k) group.push(k - from);
      for (let i = 0; i < group.length; ++i) {
        const a = list[from + i];
        for (let j = i + 1; j < group.length; ++j) {
          if (group[i] === group[j]) continue;
          const b = list[from + j];
          const meet = before(a) === after(b) || after(a) === before(b) || before(a) === before(b) || after(a) === after(b);
          if (!meet || cosine(normals, cornerFaces[a], cornerFaces[b]) < SHARP) continue;
          const joined = group[j];
          for (let k = 0; k < group.length; ++k) if (group[k] === joined) group[k] = group[i];
        }
      }
      const made = new Map();
      for (let i = 0; i < group.length; ++i) {
        const corner = list[from + i];
        if (!made.has(group[i])) made.set(group[i], add(corner));
        cornerVertices[corner] = made.get(group[i]);
      }
    }
  }
  return { cornerVertices, vertexPoints: Uint32Array.from(vertexPoints), vertexFaces: Uint32Array.from(vertexFaces) };
}

// Three vertices per triangle, with the face of each. Faces with a coordinate that is no number are left out.
function makeTriangles({ starts, corners }, cornerVertices, points) {
  let count = 0;
  for (let face = 0; face + 1 < starts.length; ++face) count += starts[face + 1] - starts[face] - 2;
  const vertices = new Uint32Array(3 * count);
  const triangleFaces = new Uint32Array(count);
  let made = 0;
  for (let face = 0; face + 1 < starts.length; ++face) {
    const start = starts[face];
    let sum = 0;
    for (let i = start; i < starts[face + 1]; ++i) {
      const p = 3 * corners[i];
      sum += points[p] + points[p + 1] + points[p + 2];
    }
    if (!Number.isFinite(sum)) continue;
    for (let i = start + 1; i + 1 < starts[face + 1]; ++i) {
      vertices[3 * made] = cornerVertices[start];
      vertices[3 * made + 1] = cornerVertices[i];
      vertices[3 * made + 2] = cornerVertices[i + 1];
      triangleFaces[made++] = face;
    }
  }
  return { vertices: vertices.slice(0, 3 * made), faces: triangleFaces.slice(0, made) };
}
