// Round numbers for the ticks of a colour bar.

// At most `most` multiples of 1, 2 or 5 times a power of ten in [low, high], as { value, label }. The labels have the
// digits that it takes to tell the ticks apart.
export function makeTicks(low, high, most) {
  const width = high - low;
  let step = 10 ** Math.floor(Math.log10(width / most));
  for (const factor of [2, 2.5, 2, 2, 2.5, 2]) {
    if (Math.floor(high / step + 1e-9) - Math.ceil(low / step - 1e-9) + 1 <= most) break;
    step *= factor;
  }
  const ticks = [];
  const last = Math.floor(high / step + 1e-9);
  for (let i = Math.ceil(low / step - 1e-9); i <= last; ++i) ticks.push(i * step);
  const largest = Math.max(Math.abs(low), Math.abs(high));
  const exponent = Math.floor(Math.log10(largest));
  const decimals = Math.max(0, -Math.floor(Math.log10(step) + 1e-9));
  const label = (value) => {
    if (Math.abs(value) < step / 2) return '0';
    if (exponent < 6 && decimals <= 6) return value.toFixed(decimals);
    return value.toExponential(Math.max(0, Math.floor(Math.log10(Math.abs(value)) + 1e-9) + decimalsOf(step)));
  };
  return ticks.map((value) => ({ value, label: label(value).replace('-', '\u2212') }));
}

// How many places behind the point a step needs; negative for tens, hundreds ...
function decimalsOf(step) {
  return -Math.floor(Math.log10(step) + 1e-9);
}

// A number as people write it, with the digits that single precision has or fewer.
export function formatNumber(value, digits = 7) {
  if (!Number.isFinite(value)) return 'undefined';
  const text = Number(value.toPrecision(digits));
  const size = Math.abs(text);
  return size !== 0 && (size < 1e-4 || size >= 1e7) ? text.toExponential() : String(text);
}
