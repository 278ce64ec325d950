// The picture: parts as actors of vtk.js, the camera, and how the pointer moves it.

import '@kitware/vtk.js/Rendering/OpenGL/Actor';
import '@kitware/vtk.js/Rendering/OpenGL/Camera';
import '@kitware/vtk.js/Rendering/OpenGL/Renderer';
import '@kitware/vtk.js/Rendering/OpenGL/Texture';
import vtkDataArray from '@kitware/vtk.js/Common/Core/DataArray';
import vtkLookupTable from '@kitware/vtk.js/Common/Core/LookupTable';
import vtkPlane from '@kitware/vtk.js/Common/DataModel/Plane';
import vtkPolyData from '@kitware/vtk.js/Common/DataModel/PolyData';
import vtkGestureManipulator from '@kitware/vtk.js/Interaction/Manipulators/GestureCameraManipulator';
import vtkPanManipulator from '@kitware/vtk.js/Interaction/Manipulators/MouseCameraTrackballPanManipulator';
import vtkRotateManipulator from '@kitware/vtk.js/Interaction/Manipulators/MouseCameraTrackballRotateManipulator';
import vtkZoomManipulator from '@kitware/vtk.js/Interaction/Manipulators/MouseCameraTrackballZoomToMouseManipulator';
import vtkInteractorStyle from '@kitware/vtk.js/Interaction/Style/InteractorStyleManipulator';
import vtkActor from '@kitware/vtk.js/Rendering/Core/Actor';
import vtkMapper from '@kitware/vtk.js/Rendering/Core/Mapper';
import vtkRenderWindow from '@kitware/vtk.js/Rendering/Core/RenderWindow';
import vtkRenderWindowInteractor from '@kitware/vtk.js/Rendering/Core/RenderWindowInteractor';
import vtkRenderer from '@kitware/vtk.js/Rendering/Core/Renderer';
import vtkOpenGLRenderWindow from '@kitware/vtk.js/Rendering/OpenGL/RenderWindow';

import { faceNormals, makeMesh, placesOf, vertexNormals } from './mesh.js';
import { pixelSize, Sharpness } from './sharpness.js';
import './steady_mapper.js';

const FAINT = [0.45, 0.5, 0.55];
const PART_COLOURS = [
  [0.6, 0.7, 0.8],
  [0.85, 0.68, 0.5],
  [0.62, 0.75, 0.58],
  [0.8, 0.6, 0.62],
  [0.7, 0.64, 0.8],
  [0.82, 0.8, 0.55],
  [0.55, 0.76, 0.76],
  [0.76, 0.76, 0.76],
];
const COLOURS = 1024;
// How far faces are moved back, in units of the depth buffer's offset, so that others that coincide with them cover them:
// those with values at all corners, at some, at none.
const BEHIND = [2, 100, 200];
const BEHIND_PART_BEFORE = 0.1;

export class Viewer {
  // `onRest` is called when a picture was drawn anew that had come to rest (sharpness.js), which it has not as long as
  // `isPlaying()`.
  constructor(container, undefinedColour, isSoftware, { isPlaying, onRest }) {
    this.container = container;
    this.undefinedColour = undefinedColour;
    this.sharpness = new Sharpness(isSoftware, {
      resize: (ratio) => this.setRatio(ratio),
      isMoving: () => isPlaying() || this.interactor.isAnimating(),
      draw: () => {
        this.draw();
        onRest();
      },
    });
    this.renderWindow = vtkRenderWindow.newInstance();
    this.renderer = vtkRenderer.newInstance({ background: [1, 1, 1] });
    this.renderWindow.addRenderer(this.renderer);
    this.glWindow = vtkOpenGLRenderWindow.newInstance();
    // The first to ask for the context decides on it.
    this.canvas.getContext('webgl2', { antialias: !isSoftware, powerPreference: 'high-performance' });
    this.glWindow.setContainer(container);
    this.renderWindow.addView(this.glWindow);
    this.camera = this.renderer.getActiveCamera();
    this.camera.setParallelProjection(true);
    this.lookupTable = vtkLookupTable.newInstance();
    this.clipPlane = vtkPlane.newInstance();
    this.clips = false;
    this.parts = [];
    this.bindPointer();
    this.camera.onModified(() => this.sharpness.changed());
  }

  get canvas() {
    return this.glWindow.getCanvas();
  }

  bindPointer() {
    const interactor = vtkRenderWindowInteractor.newInstance();
    interactor.setView(this.glWindow);
    interactor.initialize();
    interactor.bindEvents(this.container);
    const style = vtkInteractorStyle.newInstance();
    style.addMouseManipulator(vtkRotateManipulator.newInstance({ button: 1 }));
    style.addMouseManipulator(vtkPanManipulator.newInstance({ button: 1, shift: true }));
    style.addMouseManipulator(vtkPanManipulator.newInstance({ button: 2 }));
    style.addMouseManipulator(vtkPanManipulator.newInstance({ button: 3 }));
    style.addMouseManipulator(vtkZoomManipulator.newInstance({ scrollEnabled: true, dragEnabled: false }));
    style.addGestureManipulator(vtkGestureManipulator.newInstance());
    interactor.setInteractorStyle(style);
    this.interactor = interactor;
    this.style = style;
  }

  setRatio(ratio) {
    this.glWindow.setSize(...pixelSize(this.container.clientWidth, this.container.clientHeight, ratio));
  }

  // Whether the picture is the one that stays.
  get isAtRest() {
    return this.sharpness.isFinal;
  }

  render() {
    this.sharpness.changed();
    this.draw();
  }

  draw() {
    this.renderer.resetCameraClippingRange();
    this.renderWindow.render();
  }

  // Hands the picture in so many pixels per CSS pixel to `use`. What is drawn is only there until the browser shows it.
  withPixels(ratio, use) {
    this.setRatio(ratio);
    this.draw();
    use(this.canvas);
    this.render();
  }

  setBackground(colour) {
    this.renderer.setBackground(...colour);
  }

  // `colours` are 256 of red, green and blue from 0 to 255.
  setColours(colours, range) {
    const table = new Uint8Array(4 * COLOURS);
    for (let i = 0; i < COLOURS; ++i) {
      const from = (i / (COLOURS - 1)) * 255;
      const below = 3 * Math.floor(from);
      const above = Math.min(below + 3, 765);
      for (let c = 0; c < 3; ++c) {
        table[4 * i + c] = Math.round(colours[below + c] + (from % 1) * (colours[above + c] - colours[below + c]));
      }
      table[4 * i + 3] = 255;
    }
    this.lookupTable.setNanColor([...this.undefinedColour, 1]); // taken into the table with the others
    this.lookupTable.setTable(vtkDataArray.newInstance({ numberOfComponents: 4, values: table }));
    this.lookupTable.setRange(...range);
  }

  addPart() {
    const part = { surface: null, mesh: null };
    part.faces = BEHIND.map((behind) => this.addFaces(behind + BEHIND_PART_BEFORE * this.parts.length));
    part.edges = this.addLines();
    part.outline = this.addLines();
    this.parts.push(part);
  }

  addFaces(behind) {
    const faces = this.addActor();
    faces.mapper.set({ interpolateScalarsBeforeMapping: true, useLookupTableScalarRange: true });
    faces.mapper.setLookupTable(this.lookupTable);
    faces.mapper.setResolveCoincidentTopologyToPolygonOffset();
    faces.mapper.setRelativeCoincidentTopologyPolygonOffsetParameters(0, behind);
    faces.actor.getProperty().set({ specular: 0 });
    return faces;
  }

  addLines() {
    const lines = this.addActor();
    lines.mapper.setScalarVisibility(false);
    lines.mapper.setResolveCoincidentTopologyToPolygonOffset();
    lines.actor.getProperty().set({ lighting: false, ambient: 1, diffuse: 0, lineWidth: 1 });
    return lines;
  }

  addActor() {
    const data = vtkPolyData.newInstance();
    const mapper = vtkMapper.newInstance();
    mapper.setInputData(data);
    const actor = vtkActor.newInstance();
    actor.setMapper(mapper);
    actor.setVisibility(false);
    this.renderer.addActor(actor);
    return { data, mapper, actor };
  }

  // What a part looks like: its surface (null: none) and values (null: none), and how it is shown: { isShown, opacity,
  // isColoured, hasVariable, showsEdges, isDark }.
  setPart(number, surface, values, look) {
    const part = this.parts[number];
    part.isShown = look.isShown && surface !== null;
    part.opacity = look.opacity;
    part.values = values;
    if (!part.isShown) {
      for (const { actor } of actors(part)) actor.setVisibility(false);
      return;
    }
    const isColoured = look.isColoured && values !== null;
    const isNew = this.setSurface(part, surface, isColoured && values.perFace);
    this.setScalars(part, isColoured ? values : null, isNew);
    const shade = isColoured ? 0.2 : 0.5;
    let colour = PART_COLOURS[number % PART_COLOURS.length];
    if (!look.isColoured) colour = FAINT;
    else if (look.hasVariable) colour = this.undefinedColour;
    for (const { actor, data } of part.faces) {
      actor.getProperty().set({ ambient: 1 - shade, diffuse: shade, opacity: look.opacity });
      actor.getProperty().setColor(...colour);
      actor.setVisibility(look.opacity > 0 && data.getPolys().getNumberOfValues() > 0);
    }
    this.setLines(part, look);
  }

  setLines(part, look) {
    const isSolid = look.opacity > 0.5;
    const colour = look.isDark && !isSolid ? [0.75, 0.8, 0.86] : [0.12, 0.14, 0.18];
    for (const [lines, opacity] of [
      [part.edges, look.showsEdges ? 0.55 : 0],
      [part.outline, 1],
    ]) {
      lines.actor.setVisibility(opacity > 0 && look.opacity > 0);
      lines.actor.getProperty().setColor(...colour);
      lines.actor.getProperty().setOpacity(isSolid ? opacity : 0.5 * opacity);
      lines.mapper.setRelativeCoincidentTopologyLineOffsetParameters(0, isSolid ? -3 : -1);
    }
  }

  // Whether its mesh or its points, before the motion as a rigid body, are new.
  setSurface(part, surface, isFlat) {
    const last = part.surface;
    part.surface = surface;
    if (surface.matrix !== last?.matrix) {
      for (const { actor } of actors(part)) actor.setUserMatrix(columnsOf(surface.matrix));
    }
    const hasNewMesh = last?.faces !== surface.faces || part.isFlat !== isFlat;
    if (!hasNewMesh && last.still === surface.still) return false;
    part.isFlat = isFlat;
    if (hasNewMesh) {
      part.mesh = makeMesh(surface.faces, surface.still, isFlat);
      part.edges.data.getLines().setData(cells(part.mesh.edges, 2));
      part.outline.data.getLines().setData(cells(part.mesh.outline, 2));
    }
    const places = placesOf(part.mesh.vertexPoints, surface.still);
    const normals = vertexNormals(part.mesh, faceNormals(surface.faces, surface.still));
    const array = vtkDataArray.newInstance({ numberOfComponents: 3, values: normals, name: 'normals' });
    for (const { data } of part.faces) {
      data.getPoints().setData(places, 3);
      data.getPointData().setNormals(array);
    }
    part.edges.data.getPoints().setData(surface.still, 3);
    part.outline.data.getPoints().setData(surface.still, 3);
    for (const { data } of actors(part)) {
      data.getPoints().modified();
      data.modified();
    }
    return true;
  }

  setScalars(part, values, isNewSurface) {
    const given = values === null ? null : values.numbers;
    if (part.scalars === given && !isNewSurface) return;
    part.scalars = given;
    const { triangles, vertexFaces, vertexPoints } = part.mesh;
    if (given === null) {
      part.faces.forEach(({ mapper, data }, i) => {
        mapper.setScalarVisibility(false);
        data.getPolys().setData(i === 0 ? cells(triangles.vertices, 3) : new Uint32Array(0));
        data.modified();
      });
      return;
    }
    const from = values.perFace ? vertexFaces : vertexPoints;
    const numbers = new Float32Array(from.length);
    for (let i = 0; i < from.length; ++i) numbers[i] = given[from[i]];
    const array = vtkDataArray.newInstance({ numberOfComponents: 1, values: numbers, name: 'values' });
    const split = splitByValues(triangles.vertices, numbers);
    part.faces.forEach(({ mapper, data }, i) => {
      mapper.setScalarVisibility(true);
      data.getPointData().setScalars(array);
      data.getPolys().setData(cells(split[i], 3));
      data.modified();
    });
  }

  // Cuts away what lies on the side of the plane that the normal points to; null: nothing.
  setClip(clip) {
    if (clip) {
      this.clipPlane.setNormal(...clip.normal.map((x) => -x));
      this.clipPlane.setOrigin(...clip.origin);
    }
    if (this.clips === Boolean(clip)) return;
    this.clips = Boolean(clip);
    for (const part of this.parts) {
      for (const { mapper } of actors(part)) {
        if (clip) mapper.addClippingPlane(this.clipPlane);
        else mapper.removeAllClippingPlanes();
      }
    }
  }

  // Whether a point is cut away.
  isClipped(point) {
    return this.clips && this.clipPlane.evaluateFunction(point) < 0;
  }

  // The box around what is shown as [xmin, xmax, ymin, ...], or null.
  bounds(shownOnly = true) {
    const box = [Infinity, -Infinity, Infinity, -Infinity, Infinity, -Infinity];
    for (const part of this.parts) {
      if (!part.surface || (shownOnly && !part.isShown)) continue;
      const { points } = part.surface;
      for (let i = 0; i < points.length; i += 3) {
        for (let axis = 0; axis < 3; ++axis) {
          const place = points[i + axis];
          if (place < box[2 * axis]) box[2 * axis] = place;
          if (place > box[2 * axis + 1]) box[2 * axis + 1] = place;
        }
      }
    }
    return box[0] <= box[1] ? box : null;
  }

  // The directions to the right, upwards and towards the eye.
  axes() {
    const from = normalised(this.camera.getDirectionOfProjection().map((x) => -x));
    const right = normalised(cross(this.camera.getViewUp(), from));
    return { right, up: cross(from, right), from };
  }

  // Looks from a direction so that what is shown fits. `margins` are the parts of the height and width that stay free:
  // { top, bottom, side }.
  fit(from, viewUp, margins) {
    this.camera.setFocalPoint(0, 0, 0);
    this.camera.setPosition(...from);
    this.camera.setViewUp(...viewUp);
    const box = this.bounds();
    if (!box) return;
    const { right, up, from: towards } = this.axes();
    const extent = [right, up, towards].map(() => [Infinity, -Infinity]);
    for (const part of this.parts) {
      if (!part.isShown || !part.surface) continue;
      const { points } = part.surface;
      for (let i = 0; i < points.length; i += 3) {
        if (!Number.isFinite(points[i] + points[i + 1] + points[i + 2])) continue;
        [right, up, towards].forEach((axis, k) => {
          const along = axis[0] * points[i] + axis[1] * points[i + 1] + axis[2] * points[i + 2];
          if (along < extent[k][0]) extent[k][0] = along;
          if (along > extent[k][1]) extent[k][1] = along;
        });
      }
    }
    const [width, height, depth] = extent.map(([low, high]) => high - low);
    const aspect = this.container.clientWidth / Math.max(1, this.container.clientHeight);
    const usedHeight = Math.max(0.2, 1 - margins.top - margins.bottom);
    const usedWidth = Math.max(0.2, 1 - 2 * margins.side);
    const scale = Math.max(height / 2 / usedHeight, width / 2 / (usedWidth * aspect)) || depth || 1;
    const middle = extent.map(([low, high]) => (low + high) / 2);
    // The focal point is the middle of the window: what is shown is in the middle of what the margins leave.
    middle[1] += (margins.top - margins.bottom) * scale;
    const focal = [0, 1, 2].map((k) => right[k] * middle[0] + up[k] * middle[1] + towards[k] * middle[2]);
    const distance = 2 * (Math.hypot(width, height, depth) || 1);
    this.camera.setFocalPoint(...focal);
    this.camera.setPosition(...focal.map((x, k) => x + distance * towards[k]));
    this.camera.setParallelScale(scale);
    this.style.setCenterOfRotation?.([0, 1, 2].map((k) => (box[2 * k] + box[2 * k + 1]) / 2));
  }

  // Where the camera is, as a text that tells places apart.
  get place() {
    const { camera } = this;
    return JSON.stringify([camera.getPosition(), camera.getFocalPoint(), camera.getViewUp(), camera.getParallelScale()]);
  }

  // Where a point is in the container, in CSS pixels.
  project(point) {
    const { right, up } = this.axes();
    const focal = this.camera.getFocalPoint();
    const offset = point.map((x, k) => x - focal[k]);
    const perPixel = (2 * this.camera.getParallelScale()) / this.container.clientHeight;
    return [
      this.container.clientWidth / 2 + dot(offset, right) / perPixel,
      this.container.clientHeight / 2 - dot(offset, up) / perPixel,
    ];
  }
}

function actors(part) {
  return [...part.faces, part.edges, part.outline];
}

// The 16 numbers of a matrix of 3 rows of 4, column by column, as vtk.js wants them.
function columnsOf(matrix) {
  const rows = [...(matrix ?? [1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0]), 0, 0, 0, 1];
  return rows.map((_, i) => rows[4 * (i % 4) + Math.floor(i / 4)]);
}

// The triangles with values at all corners, at some, and at none.
function splitByValues(vertices, numbers) {
  const lists = [[], [], []];
  if (!numbers.some(Number.isNaN)) return [vertices, lists[1], lists[2]];
  for (let i = 0; i < vertices.length; i += 3) {
    const triangle = [vertices[i], vertices[i + 1], vertices[i + 2]];
    const missing = triangle.filter((vertex) => Number.isNaN(numbers[vertex])).length;
    lists[missing === 0 ? 0 : missing < 3 ? 1 : 2].push(...triangle);
  }
  return lists;
}

// Cells of one size as vtk.js wants them: each with its size in front.
function cells(indices, size) {
  const count = indices.length / size;
  const list = new Uint32Array(count * (size + 1));
  for (let i = 0, to = 0; i < count; ++i) {
    list[to++] = size;
    for (let k = 0; k < size; ++k) list[to++] = indices[size * i + k];
  }
  return list;
}

export function dot(a, b) {
  return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

function cross(a, b) {
  return [a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]];
}

function normalised(a) {
  const length = Math.hypot(...a) || 1;
  return a.map((x) => x / length);
}
