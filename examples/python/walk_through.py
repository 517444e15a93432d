# %% [markdown]
# # Stitching from Python
#
# Open this file in an editor that shows cells (`# %%`), or run it as it is:
#
#     python3 examples/python/walk_through.py
#
# It needs NumPy only. The frames are cut out of a scene that is made up here; put those of your
# camera, `uint8` arrays of one size, in their place.

# %%
import numpy as np

import jqstitching

rng = np.random.default_rng(3)
blocks = rng.integers(60, 200, (90, 180, 3)).repeat(9, axis=0).repeat(9, axis=1)
scene = blocks.astype(np.uint8)


def camera(x, y):
    """What a camera of 640 x 480 pixels sees at this place of the scene."""
    return scene[y : y + 480, x : x + 640]


# %% [markdown]
# ## How far apart are two frames?

# %%
shift = jqstitching.register(camera(0, 0), camera(120, 35))
print(f"the second frame lies {shift.offset} from the first; {shift.matches} matches say so")

# %% [markdown]
# ## A live run
#
# Hand over one frame after another. Each gets a verdict, and a sentence that tells it to people.

# %%
stitcher = jqstitching.Stitcher(undo_depth=5)
for i, (x, y) in enumerate([(0, 0), (130, 20), (140, 20), (270, 40), (940, 240)]):
    print(i, stitcher.add(camera(x, y)).sentence)

# %% [markdown]
# The last frame shows nothing of the picture, so the track is lost. Go on from a place that is in
# it: here from the first frame.

# %%
x0, y0, x1, y1 = stitcher.placed_bounds
print("went on:", stitcher.continue_at((x0, y0)))
print(stitcher.add(camera(20, 150)).sentence)

# %% [markdown]
# `mosaic` is a copy, `mosaic_view()` is not. Positions are mosaic pixels; growth moves them, so ask
# for `placed_bounds` anew.

# %%
x0, y0, x1, y1 = stitcher.placed_bounds
picture = stitcher.mosaic[y0:y1, x0:x1]
print("picture:", picture.shape, "of a mosaic of", stitcher.mosaic_view().shape)

# %% [markdown]
# ## Taking back, and keeping a run

# %%
state = stitcher.save_state()
print("taken back:", stitcher.undo(), stitcher.placed_bounds)
stitcher.restore_state(state)
print("and again:", stitcher.placed_bounds)

# %% [markdown]
# ## Saving
#
#     stitcher.save("mosaic.ome.tif", pixel_size=0.345)
#     stitcher.save("mosaic.png", background=(255, 255, 255))
#
# Files in one go, and hundreds of folders:
#
#     result = jqstitching.stitch_files("scans/", skip_bad=True)
#     result.save("mosaic.png")
#     result.save_report("report.html")
#
#     python3 -m jqstitching.many plate/* -o results
