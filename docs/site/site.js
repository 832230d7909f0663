// Search, the menu of narrow windows, and the switch from light to dark. Pages read without it.
"use strict";

const root = document.body.dataset.root;
const input = document.getElementById("site-search");
const results = document.getElementById("site-results");

// All words must be there. A word in a title counts more than one in the text, and most where the title begins with it.
function score([title, , kind, text], words) {
    const name = title.toLowerCase();
    const last = name.split(/::| › |\//).pop();
    let sum = kind === "interface" ? 0 : 2;
    for (const word of words) {
        if (name === word || last === word) sum += 60;
        else if (name.startsWith(word) || last.startsWith(word)) sum += 30;
        else if (name.includes(word)) sum += 15;
        else if (text.toLowerCase().includes(word)) sum += 3;
        else return 0;
    }
    return sum - title.length / 200;
}

function excerpt(text, words) {
    const at = Math.max(0, text.toLowerCase().indexOf(words[0]) - 40);
    return (at ? "… " : "") + text.slice(at, at + 140) + (text.length > at + 140 ? " …" : "");
}

function show() {
    const words = input.value.toLowerCase().split(/\s+/).filter(Boolean);
    results.replaceChildren();
    results.hidden = !words.length;
    if (!words.length) return;
    const found = window.searchIndex.map(entry => [score(entry, words), entry]).filter(([value]) => value > 0);
    found.sort((a, b) => b[0] - a[0]);
    for (const [, [title, address, kind, text]] of found.slice(0, 20)) {
        const link = document.createElement("a");
        link.href = root + address;
        for (const [style, words_] of [["name", title], ["kind", kind], ["excerpt", excerpt(text, words)]]) {
            const part = document.createElement("span");
            part.className = style;
            part.textContent = words_;
            link.append(part);
        }
        const row = document.createElement("li");
        row.append(link);
        results.append(row);
    }
    if (!found.length) results.append(Object.assign(document.createElement("li"), {textContent: "Nothing found"}));
}

function step(by) {
    const links = [...results.querySelectorAll("a")];
    const at = links.indexOf(document.activeElement) + by;
    (at < 0 ? input : links[Math.min(at, links.length - 1)])?.focus();
}

input.addEventListener("input", show);
document.addEventListener("keydown", event => {
    const inSearch = event.target === input || results.contains(event.target);
    if (event.key === "/" && !inSearch) input.focus();
    else if (event.key === "Escape" && inSearch) results.hidden = true;
    else if (event.key === "Enter" && event.target === input) results.querySelector("a")?.click();
    else if (event.key === "ArrowDown" && inSearch) step(1);
    else if (event.key === "ArrowUp" && inSearch) step(-1);
    else return;
    event.preventDefault();
});
document.addEventListener("click", event => {
    if (!event.target.closest(".search")) results.hidden = true;
});
const wanted = new URLSearchParams(location.search).get("search");
if (wanted) {
    input.value = wanted;
    show();
}

document.getElementById("site-menu").addEventListener("click", event => {
    const open = document.body.classList.toggle("menu");
    event.currentTarget.setAttribute("aria-expanded", open);
});
document.getElementById("site-theme").addEventListener("click", () => {
    const page = document.documentElement;
    const dark = page.dataset.theme ? page.dataset.theme === "dark" : matchMedia("(prefers-color-scheme: dark)").matches;
    page.dataset.theme = dark ? "light" : "dark";
    try {
        localStorage.setItem("theme", page.dataset.theme);
    } catch (refused) {}
});
