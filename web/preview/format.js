// Numbers as people read them.

const whole = new Intl.NumberFormat("en");

export const count = (number) => whole.format(number);

export function plural(number, word) {
  return count(number) + " " + word + (number === 1 ? "" : "s");
}

export function bytes(number) {
  if (number < 1024) {
    return plural(number, "byte");
  }
  const units = ["KiB", "MiB", "GiB"];
  let value = number / 1024;
  let unit = 0;
  while (value >= 1024 && unit < units.length - 1) {
    value /= 1024;
    unit += 1;
  }
  return value.toFixed(value < 10 ? 1 : 0) + " " + units[unit];
}

/** A length in the scene's units, short. */
export function length(number) {
  return String(Number(number.toPrecision(3)));
}
