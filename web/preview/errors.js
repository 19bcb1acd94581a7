// Whatever goes wrong is kept in the document, where the reader and a test see it. Loaded before anything else.

const texts = [];

export function tellError(text) {
  texts.push(String(text));
  const root = document.documentElement;
  root.dataset.errors = String(texts.length);
  root.dataset.firstError = texts[0];
}

addEventListener("error", (event) => tellError(event.message));
addEventListener("unhandledrejection", (event) => tellError(event.reason));
addEventListener("securitypolicyviolation", (event) => tellError("refused: " + event.blockedURI));

const writeError = console.error;
console.error = (...parts) => {
  tellError(parts.join(" "));
  writeError.apply(console, parts);
};
