"""Frames of a camera over a scene that is known, and the files that the programs read."""

import numpy as np

HEIGHT, WIDTH = 150, 200


def scene(height, width, seed=1, channels=3):
    """Soft blocks of random colour, with corners everywhere and no black."""
    rng = np.random.default_rng(seed)
    blocks = rng.integers(70, 190, (height // 7 + 2, width // 7 + 2, channels))
    picture = np.kron(blocks, np.ones((7, 7, 1), int))[: height + 2, : width + 2]
    soft = sum(picture[dy : dy + height, dx : dx + width] for dy in range(3) for dx in range(3))
    return (soft // 9).astype(np.uint8)


def frame_at(picture, x, y):
    return picture[y : y + HEIGHT, x : x + WIDTH]


def walk(count, step=(40, 6), seed=1):
    """Frames that overlap by four fifths, and their corners in the scene."""
    corners = [(i * step[0], i * step[1]) for i in range(count)]
    last = corners[-1]
    picture = scene(HEIGHT + last[1], WIDTH + last[0], seed)
    return [frame_at(picture, x, y) for x, y in corners], corners, picture


def write_ppm(path, frame):
    header = b"P5" if frame.ndim == 2 else b"P6"
    size = b"\n%d %d\n255\n" % (frame.shape[1], frame.shape[0])
    path.write_bytes(header + size + np.ascontiguousarray(frame).tobytes())


def read_ppm(path):
    kind, size, most, pixels = path.read_bytes().split(b"\n", 3)
    width, height = map(int, size.split())
    assert kind == b"P6" and most == b"255"
    return np.frombuffer(pixels, np.uint8).reshape(height, width, 3)


def write_frames(folder, frames):
    folder.mkdir(parents=True, exist_ok=True)
    paths = [folder / f"frame_{i:03}.ppm" for i in range(1, len(frames) + 1)]
    for path, frame in zip(paths, frames):
        write_ppm(path, frame)
    return paths
