#include "host/record/html_page.h"

namespace jqhost {

const char* const kHtmlStyle = R"(
body { font: 15px/1.45 system-ui, sans-serif; margin: 2rem auto; max-width: 80rem; padding: 0 1rem;
       color: #1c1c1c; background: #fff; }
h1 { font-size: 1.5rem; margin-bottom: .2rem; } h2 { font-size: 1.1rem; margin-top: 2rem; }
.layers label { margin-right: 1.2rem; } .hint { color: #555; }
svg { width: 100%; height: 75vh; background: #222; cursor: grab; touch-action: none; }
#frames rect { fill: none; stroke: #0bf; stroke-opacity: .55; vector-effect: non-scaling-stroke; }
#frames rect:hover { stroke: #fd0; stroke-opacity: 1; fill: #fd02; }
#frames rect.doubt { stroke: #f33; stroke-opacity: 1; stroke-dasharray: 6 4; }
#order polyline { fill: none; stroke: #f60; stroke-width: 2; vector-effect: non-scaling-stroke; }
#order circle { fill: #f60; } #order circle:first-of-type { fill: #0c4; }
#numbers text { fill: #fff; stroke: #000; stroke-width: .15em; paint-order: stroke;
                text-anchor: middle; dominant-baseline: central; pointer-events: none; }
#seams path { fill: none; stroke: #f0f; stroke-width: 1.5; vector-effect: non-scaling-stroke; }
#used-pairs line { stroke: #0c4; stroke-width: 2; vector-effect: non-scaling-stroke; }
#thrown-pairs line { stroke: #f33; stroke-width: 2; stroke-dasharray: 8 5; vector-effect: non-scaling-stroke; }
#doubted-pairs line { stroke: #fd0; stroke-width: 1; stroke-dasharray: 2 4; vector-effect: non-scaling-stroke; }
#losses circle { fill: #e003; stroke: #e00; stroke-width: 4; vector-effect: non-scaling-stroke; }
table { border-collapse: collapse; width: 100%; } th, td { text-align: left; padding: .25rem .6rem;
        border-bottom: 1px solid #ddd; vertical-align: top; }
th { position: sticky; top: 0; background: #fff; }
th.n, td.n { text-align: right; font-variant-numeric: tabular-nums; white-space: nowrap; }
tr.out td { background: #fff1e6; } tr.doubt td { background: #fffbd6; } tr.tracked td { color: #555; } .advice { color: #555; }
td img { display: block; max-width: 128px; }
)";

// The view is the part of the picture that the map shows; a zoom keeps the place under
// the pointer.
const char* const kHtmlScript = R"(
const map = document.getElementById('map');
for (const box of document.querySelectorAll('input[data-layer]')) {
  const show = () => {
    document.getElementById(box.dataset.layer).style.display = box.checked ? '' : 'none';
  };
  box.addEventListener('change', show);
  show();
}
if (map) {
  const all = map.getAttribute('viewBox').split(' ').map(Number);
  let view = all.slice();
  const apply = () => map.setAttribute('viewBox', view.join(' '));
  const place = event => {
    const point = new DOMPoint(event.clientX, event.clientY);
    return point.matrixTransform(map.getScreenCTM().inverse());
  };
  map.addEventListener('wheel', event => {
    event.preventDefault();
    const at = place(event);
    const factor = Math.exp(event.deltaY * 0.0015);
    const width = Math.min(Math.max(view[2] * factor, all[2] / 200), all[2] * 1.5);
    const used = width / view[2];
    view = [at.x - (at.x - view[0]) * used, at.y - (at.y - view[1]) * used,
            width, view[3] * used];
    apply();
  }, {passive: false});
  let held = null;
  map.addEventListener('pointerdown', event => {
    held = place(event);
    map.setPointerCapture(event.pointerId);
  });
  map.addEventListener('pointermove', event => {
    if (!held) return;
    const at = place(event);
    view[0] += held.x - at.x;
    view[1] += held.y - at.y;
    apply();
  });
  map.addEventListener('pointerup', () => { held = null; });
  map.addEventListener('dblclick', () => { view = all.slice(); apply(); });
}
)";

}  // namespace jqhost
