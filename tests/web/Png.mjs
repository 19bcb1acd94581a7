// Reads PNG files of 8 bits a channel without interlacing: what browsers take pictures in.
import { inflateSync } from "node:zlib";

function predict(filter, left, above, corner) {
  switch (filter) {
    case 1:
      return left;
    case 2:
      return above;
    case 3:
      return (left + above) >> 1;
    case 4: {
      const sum = left + above - corner;
      const [a, b, c] = [left, above, corner].map((value) => Math.abs(sum - value));
      return a <= b && a <= c ? left : b <= c ? above : corner;
    }
    default:
      return 0;
  }
}

/** {width, height, channels, data}: rows of bytes without the filters. */
export function decodePng(file) {
  const parts = [];
  let head = null;
  for (let at = 8; at < file.length; ) {
    const size = file.readUInt32BE(at);
    const kind = file.toString("latin1", at + 4, at + 8);
    const body = file.subarray(at + 8, at + 8 + size);
    if (kind === "IHDR") {
      head = { width: body.readUInt32BE(0), height: body.readUInt32BE(4), channels: body[9] === 6 ? 4 : 3 };
      if (body[8] !== 8 || ![2, 6].includes(body[9]) || body[12] !== 0) {
        throw new Error("a kind of PNG that is not read here");
      }
    } else if (kind === "IDAT") {
      parts.push(body);
    }
    at += size + 12;
  }
  const { width, height, channels } = head;
  const raw = inflateSync(Buffer.concat(parts));
  const row = width * channels;
  const data = Buffer.alloc(row * height);
  for (let y = 0; y < height; y += 1) {
    const filter = raw[y * (row + 1)];
    for (let x = 0; x < row; x += 1) {
      const left = x >= channels ? data[y * row + x - channels] : 0;
      const above = y > 0 ? data[(y - 1) * row + x] : 0;
      const corner = x >= channels && y > 0 ? data[(y - 1) * row + x - channels] : 0;
      data[y * row + x] = raw[y * (row + 1) + 1 + x] + predict(filter, left, above, corner);
    }
  }
  return { ...head, data };
}

/** How many colours a picture has, told apart by their upper five bits a channel. */
export function countColors({ data, channels }) {
  const colors = new Set();
  for (let at = 0; at < data.length; at += channels) {
    colors.add(((data[at] >> 3) << 10) | ((data[at + 1] >> 3) << 5) | (data[at + 2] >> 3));
  }
  return colors.size;
}

/** The part of the pixels, 0 to 1, that differ visibly between two pictures of a size. */
export function compare(one, other) {
  let count = 0;
  for (let at = 0; at < one.data.length; at += one.channels) {
    const differs = [0, 1, 2].some((i) => Math.abs(one.data[at + i] - other.data[at + i]) > 12);
    count += differs ? 1 : 0;
  }
  return count / (one.width * one.height);
}
