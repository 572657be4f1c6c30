// The page of a pyramid: one file that shows the tiles beside it, zooms with the wheel, the keys + and - or
// two fingers, and pans by dragging or with the arrow keys. It loads nothing from a network.
#include "host/pyramid/PyramidFiles.h"

namespace tzhost {
namespace {

constexpr char kHead[] = R"(<!DOCTYPE html>
<html lang="en">
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>)";

constexpr char kBody[] = R"(</title>
<style>
  html, body { margin: 0; height: 100%; overflow: hidden; }
  #view { position: absolute; inset: 0; overflow: hidden; cursor: grab; touch-action: none; outline: none;
    background: #fff conic-gradient(#eee 25%, #fff 0 50%, #eee 0 75%, #fff 0) 0 0 / 24px 24px; }
  #view:active { cursor: grabbing; }
  #view img { position: absolute; user-select: none; pointer-events: none; }
  #note { position: absolute; left: 8px; bottom: 8px; padding: 3px 8px; border-radius: 4px; color: #fff;
    background: #000a; font: 13px system-ui, sans-serif; }
</style>
<div id="view" tabindex="0" aria-label="Drawing; drag to move, wheel to zoom"></div>
<div id="note"></div>
<script>
"use strict";
)";

constexpr char kScript[] = R"(
const view = document.getElementById("view"), note = document.getElementById("note");
const finest = levels.length - 1, full = levels[finest];
let scale = 1, x = 0, y = 0;   // screen pixels per pixel of the finest level; its top left corner on the screen
let fitted = true;             // all in sight and nothing moved since: stays so when the window changes
const shown = new Map();       // tile name -> img

function fit() {
  scale = Math.min(view.clientWidth / full[0], view.clientHeight / full[1]) * 0.95;
  x = (view.clientWidth - full[0] * scale) / 2;
  y = (view.clientHeight - full[1] * scale) / 2;
  fitted = true;
  draw();
}

function move(byX, byY) {
  x += byX;
  y += byY;
  fitted = false;
  draw();
}

function zoom(factor, atX, atY) {
  const smallest = 16 / Math.max(full[0], full[1]);
  const next = Math.min(16, Math.max(smallest, scale * factor));
  x = atX - (atX - x) * next / scale;
  y = atY - (atY - y) * next / scale;
  scale = next;
  fitted = false;
  draw();
}

// The tiles of a level that are in sight, as [column, row, name].
function inSight(level) {
  const [width, height] = levels[level], size = tile * scale * full[0] / width, tall = tile * scale * full[1] / height;
  const last = (side) => Math.ceil(side / tile) - 1, found = [];
  const c0 = Math.max(0, Math.floor(-x / size)), c1 = Math.min(last(width), Math.floor((view.clientWidth - x) / size));
  const r0 = Math.max(0, Math.floor(-y / tall)), r1 = Math.min(last(height), Math.floor((view.clientHeight - y) / tall));
  for (let row = r0; row <= r1; ++row)
    for (let column = c0; column <= c1; ++column) found.push([column, row, level + "/" + column + "_" + row]);
  return found;
}

function place(img, level, column, row) {
  const [width, height] = levels[level], sx = scale * full[0] / width, sy = scale * full[1] / height;
  const edge = (n, side, s, origin) => Math.round(origin + Math.min(n * tile, side) * s);
  const left = edge(column, width, sx, x), top = edge(row, height, sy, y);
  img.style.left = left + "px";
  img.style.top = top + "px";
  img.style.width = edge(column + 1, width, sx, x) - left + "px";
  img.style.height = edge(row + 1, height, sy, y) - top + "px";
}

// The level whose pixels are nearest to the screen's. Tiles of other levels go when all of its tiles are there:
// drawn over each other, half-transparent tiles would darken.
function draw() {
  const ratio = window.devicePixelRatio || 1;
  const level = Math.min(finest, Math.max(0, finest + Math.ceil(Math.log2(scale * ratio) - 0.2)));
  const wanted = new Map(inSight(level).map(([column, row, name]) => [name, [level, column, row]]));
  for (const [name, [of, column, row]] of wanted) {
    if (shown.has(name)) continue;
    const img = new Image();
    img.alt = "";
    img.draggable = false;
    img.at = [of, column, row];
    img.style.visibility = "hidden";
    img.onload = img.onerror = () => { img.done = true; settle(); };
    img.src = "pyramid_files/" + name + ".png";
    shown.set(name, img);
    view.append(img);
  }
  for (const [, img] of shown) place(img, ...img.at);
  // Pixels larger than the screen's are shown as they are: smoothing stops at a tile's edge, and the edges would show.
  view.style.imageRendering = scale * ratio > 2 ? "pixelated" : "auto";
  const percent = scale < 1 ? (100 * scale).toPrecision(3) : Math.round(100 * scale);
  note.textContent = full[0] + " × " + full[1] + " pixels, " + percent + " %, level " + level;
  current = wanted;
  settle();
}

let current = new Map();
function settle() {
  const ready = [...current.keys()].every((name) => shown.get(name).done);
  if (!ready) return;
  for (const [name, img] of shown) {
    if (current.has(name)) {
      img.style.visibility = "visible";
    } else {
      img.onload = img.onerror = null;
      img.remove();
      shown.delete(name);
    }
  }
}

const fingers = new Map();
view.addEventListener("pointerdown", (e) => {
  view.setPointerCapture(e.pointerId);
  fingers.set(e.pointerId, [e.clientX, e.clientY]);
});
view.addEventListener("pointermove", (e) => {
  const before = fingers.get(e.pointerId);
  if (!before) return;
  const other = [...fingers].find(([id]) => id !== e.pointerId);
  if (other) {
    const [ox, oy] = other[1];
    const was = Math.hypot(before[0] - ox, before[1] - oy), is = Math.hypot(e.clientX - ox, e.clientY - oy);
    if (was > 0) zoom(is / was, ox, oy);
  } else {
    move(e.clientX - before[0], e.clientY - before[1]);
  }
  fingers.set(e.pointerId, [e.clientX, e.clientY]);
});
for (const end of ["pointerup", "pointercancel"]) view.addEventListener(end, (e) => fingers.delete(e.pointerId));
view.addEventListener("wheel", (e) => {
  e.preventDefault();
  zoom(Math.pow(2, -(e.deltaMode ? e.deltaY * 20 : e.deltaY) / 300), e.clientX, e.clientY);
}, { passive: false });
view.addEventListener("dblclick", (e) => zoom(2, e.clientX, e.clientY));
window.addEventListener("keydown", (e) => {
  const step = { ArrowLeft: [80, 0], ArrowRight: [-80, 0], ArrowUp: [0, 80], ArrowDown: [0, -80] }[e.key];
  if (step) move(...step);
  else if (e.key === "+" || e.key === "=") zoom(1.5, view.clientWidth / 2, view.clientHeight / 2);
  else if (e.key === "-") zoom(1 / 1.5, view.clientWidth / 2, view.clientHeight / 2);
  else if (e.key === "0") fit();
});
window.addEventListener("resize", () => fitted ? fit() : draw());
fit();
</script>
)";

std::string escaped(const std::string& text) {
    std::string out;
    for (const char c : text) {
        switch (c) {
            case '<':
                out += "&lt;";
                break;
            case '&':
                out += "&amp;";
                break;
            default:
                out += c;
        }
    }
    return out;
}

}  // namespace

std::string pyramidPage(const std::string& title, const std::vector<TzSize>& levels) {
    std::string sizes;
    for (const TzSize& level : levels) {
        if (!sizes.empty()) sizes += ", ";
        sizes += "[" + std::to_string(level.width) + ", " + std::to_string(level.height) + "]";
    }
    return kHead + escaped(title) + kBody + "const tile = " + std::to_string(kPyramidTileSide) +
           ", levels = [" + sizes + "];\n" + kScript;
}

}  // namespace tzhost
