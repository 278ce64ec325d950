// How vtk.js draws parts, but for some work that takes most of the time where the processor draws. vtk.js makes a program of
// shaders anew for each new number on a part, hands the table of colours over again, and moves faces back pixel by pixel,
// so that hidden pixels are computed too.

import PolyDataMapper from '@kitware/vtk.js/Rendering/OpenGL/PolyDataMapper';
import Texture from '@kitware/vtk.js/Rendering/OpenGL/Texture';
import { registerOverride } from '@kitware/vtk.js/Rendering/OpenGL/ViewNodeFactory';
import macro from '@kitware/vtk.js/macros';

const OFFSET_UNIT = 0.000016; // of vtk.js, as a part of the depth

// A texture that is uploaded once as long as it is made of the same array.
const newTexture = macro.newInstance((publicAPI, model, initialValues) => {
  Texture.extend(publicAPI, model, initialValues);
  const { create2DFromRaw } = publicAPI;
  let uploaded = null;
  publicAPI.create2DFromRaw = (image) => {
    if (model.handle && uploaded === image.data) return true;
    uploaded = image.data;
    return create2DFromRaw(image);
  };
});

const newMapper = macro.newInstance((publicAPI, model, initialValues) => {
  PolyDataMapper.extend(publicAPI, model, initialValues);
  model.internalColorTexture = newTexture({ resizable: true });

  // All that the source of the shaders depends on, of what the page makes use of.
  const kindOfShaders = (cells, actor) => {
    const { renderable } = model;
    const property = actor.getProperty();
    const buffer = cells.getCABO();
    return [
      property.getRepresentation(),
      property.getInterpolation(),
      property.getLighting(),
      cells.getReferenceByName('lastLightComplexity'),
      cells.getReferenceByName('lastLightCount'),
      buffer.getNormalOffset(),
      buffer.getTCoordOffset(),
      buffer.getTCoordComponents(),
      buffer.getColorComponents(),
      renderable.getColorTextureMap()?.getPointData().getScalars().getNumberOfComponents(),
      renderable.getNumberOfClippingPlanes(),
      model.haveSeenDepthRequest,
    ].join();
  };

  const kinds = new Map(); // of the shaders that each kind of cells has
  const { getNeedToRebuildShaders } = publicAPI;
  publicAPI.getNeedToRebuildShaders = (cells, renderer, actor) => {
    if (!getNeedToRebuildShaders(cells, renderer, actor)) return false;
    if (model.currentRenderPass || model.lastRenderPassShaderReplacement) {
      kinds.delete(cells); // translucent surfaces have shaders of their own
      return true;
    }
    const kind = kindOfShaders(cells, actor);
    if (kinds.get(cells) === kind) return false;
    kinds.set(cells, kind);
    return true;
  };

  // Faces are moved back by the graphics library.
  let depthSteps = null; // of the depth buffer
  const { replaceShaderCoincidentOffset, renderPieceDraw } = publicAPI;
  publicAPI.replaceShaderCoincidentOffset = (shaders, renderer, actor) => {
    const hasFaces = model.lastBoundBO.getPrimitiveType() === model.primTypes.Tris;
    if (!hasFaces) replaceShaderCoincidentOffset(shaders, renderer, actor);
  };
  publicAPI.renderPieceDraw = (renderer, actor) => {
    const { context: gl, renderable } = model;
    const { factor, offset } = renderable.getCoincidentTopologyPolygonOffsetParameters();
    gl.enable(gl.POLYGON_OFFSET_FILL);
    depthSteps ??= 2 ** gl.getParameter(gl.DEPTH_BITS);
    gl.polygonOffset(factor, offset * OFFSET_UNIT * depthSteps);
    renderPieceDraw(renderer, actor);
    gl.disable(gl.POLYGON_OFFSET_FILL);
  };
});

registerOverride('vtkMapper', newMapper);
