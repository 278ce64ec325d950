// Decodes the data in the page: the other side of page/encoding.cpp.

// The chunks, unpacked when they are first asked for.
export class Chunks {
  constructor(elements) {
    this.elements = elements;
    this.unpacked = new Map();
  }

  // The bytes of a chunk. What is unpacked is kept, up to a limit, as it is asked for again when the user steps back.
  get(number) {
    let bytes = this.unpacked.get(number);
    if (bytes) {
      this.unpacked.delete(number);
    } else {
      bytes = inflate(fromBase64(this.elements[number].textContent));
    }
    this.unpacked.set(number, bytes);
    if (this.unpacked.size > 64) this.unpacked.delete(this.unpacked.keys().next().value);
    return bytes;
  }
}

function fromBase64(text) {
  const binary = atob(text);
  const bytes = new Uint8Array(binary.length);
  for (let i = 0; i < bytes.length; ++i) bytes[i] = binary.charCodeAt(i);
  return bytes;
}

async function inflate(bytes) {
  const stream = new Blob([bytes]).stream().pipeThrough(new DecompressionStream('deflate'));
  return new Uint8Array(await new Response(stream).arrayBuffer());
}

// Reads varints, one after the other.
class VarintReader {
  constructor(bytes, offset) {
    this.bytes = bytes;
    this.place = offset;
  }

  next() {
    const { bytes } = this;
    let byte = bytes[this.place++];
    let number = byte & 0x7f;
    for (let shift = 7; byte & 0x80; shift += 7) {
      byte = bytes[this.place++];
      number |= (byte & 0x7f) << shift;
    }
    return number >>> 0;
  }

  nextDifference() {
    const number = this.next();
    return (number >>> 1) ^ -(number & 1);
  }

  differences(count) {
    const numbers = new Int32Array(count);
    let before = 0;
    for (let i = 0; i < count; ++i) numbers[i] = before += this.nextDifference();
    return numbers;
  }
}

// Faces as { starts, corners, elements, nodes }: the corners of face i are corners[starts[i]] to corners[starts[i + 1] - 1].
export function decodeFaces(bytes, offset, faceCount, pointCount, hasNodes) {
  const reader = new VarintReader(bytes, offset);
  const starts = new Uint32Array(faceCount + 1);
  const runs = reader.next();
  let face = 0;
  for (let run = 0; run < runs; ++run) {
    const count = reader.next();
    const size = reader.next();
    for (let i = 0; i < count; ++i, ++face) starts[face + 1] = starts[face] + size;
  }
  const corners = new Uint32Array(starts[faceCount]);
  const before = new Int32Array(256);
  for (face = 0; face < faceCount; ++face) {
    const start = starts[face];
    const size = starts[face + 1] - start;
    for (let i = 0; i < size; ++i) corners[start + i] = before[i] += reader.nextDifference();
  }
  const elements = reader.differences(faceCount);
  const nodes = hasNodes ? reader.differences(pointCount) : null;
  return { starts, corners, elements, nodes };
}

// `count` numbers of a range in so many bits (0: single precision). Undefined ones are NaN.
export function decodeNumbers(bytes, offset, count, low, high, bits) {
  const numbers = new Float32Array(count);
  if (bits === 0) {
    const whole = new Uint8Array(numbers.buffer);
    for (let plane = 0; plane < 4; ++plane) {
      for (let i = 0; i < count; ++i) whole[4 * i + plane] = bytes[offset + plane * count + i];
    }
    return numbers;
  }
  const nothing = (1 << bits) - 1;
  const scale = (high - low) / (nothing - 1);
  let code = 0;
  for (let i = 0; i < count; ++i) {
    const coded = bytes[offset + i] | (bytes[offset + count + i] << 8);
    code = (code + ((coded >>> 1) ^ -(coded & 1))) & 0xffff;
    numbers[i] = code === nothing ? NaN : low + code * scale;
  }
  return numbers;
}

// The bytes that `count` numbers take.
export function sizeOfNumbers(count, bits) {
  return count * (bits === 0 ? 4 : 2);
}
