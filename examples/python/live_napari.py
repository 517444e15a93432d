"""Shows a live run in napari, where that is installed: pip install "napari[all]".

    python3 examples/python/live_napari.py FOLDER

The pictures of FOLDER, which a program of your own can replace by its camera, are stitched on
a thread of their own while the window shows the picture as it grows.
"""

import sys
import time

import napari
from imageio.v3 import imread
from napari.qt.threading import thread_worker

import jqstitching

if len(sys.argv) != 2:
    sys.exit(__doc__)
viewer = napari.Viewer(title="live run")
layer = None


def show(update):
    """On the thread of the window: what the other one yields."""
    global layer
    picture, sentence = update
    viewer.status = sentence
    if layer is None:
        layer = viewer.add_image(picture, rgb=True, name="mosaic")
    else:
        layer.data = picture


@thread_worker(connect={"yielded": show})
def stitch(folder):
    stitcher = jqstitching.Stitcher()
    for path in jqstitching.list_pictures(folder):
        verdict = stitcher.add(imread(path))
        if stitcher.placed_bounds is not None:
            x0, y0, x1, y1 = stitcher.placed_bounds
            # A copy: the window looks at it while the next frame is painted.
            yield stitcher.mosaic_view()[y0:y1, x0:x1].copy(), verdict.sentence
        time.sleep(0.05)  # the pace of a camera


stitch(sys.argv[1])
napari.run()
