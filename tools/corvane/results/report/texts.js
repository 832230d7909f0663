// The report's own texts in the reader's language. What the page carries no other form of is English.

const TEXTS = JSON.parse(document.getElementById("texts").textContent);

/** The text in the reader's language, with values in the place of {0}, {1} and so on. */
function tr(text, ...values) {
  return (TEXTS[text] || text).replace(/\{(\d)\}/g, (mark, number) => values[number]);
}
