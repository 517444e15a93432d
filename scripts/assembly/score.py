"""What became of the frames of a pass."""
from math import hypot
from statistics import median

OVERLAP = 0.2  # of a frame: so much of another one holds it


def overlap(a, b):
    """The share of a frame that another one shows, too."""
    across, down = a.width - abs(a.x - b.x), a.height - abs(a.y - b.y)
    return max(0, across) * max(0, down) / (a.width * a.height)


class Score:
    """Right: no further from its true place than the tolerance. Wrong: further, or placed though
    it shows nothing of the scene. Missing: not placed, though a good frame overlaps another good
    one by a fifth. Where the whole lies is free: it is put where most frames are right."""

    def __init__(self, taken, places, tolerance):
        gaps = {frame.path: (places[frame.path][0] - frame.x, places[frame.path][1] - frame.y)
                for frame in taken if frame.has_place and frame.path in places}
        errors = self.errors(gaps, tolerance)
        self.right = sum(error <= tolerance for error in errors.values())
        self.wrong = len(places) - self.right
        self.largest = max((e for e in errors.values() if e <= tolerance), default=0.0)
        good = [frame for frame in taken if frame.kind == 'good']
        held = [frame for frame in good
                if any(overlap(frame, other) >= OVERLAP for other in good if other is not frame)]
        self.overlapping = len(held)
        self.held = sum(frame.path in places for frame in held)
        self.missing = self.overlapping - self.held

    @staticmethod
    def errors(gaps, tolerance):
        """Distance of each placed frame from its true place."""
        def near(gap):
            return [g for g in gaps.values() if hypot(g[0] - gap[0], g[1] - gap[1]) <= tolerance]
        group = max((near(gap) for gap in gaps.values()), key=len, default=[])
        if not group:
            return {}
        x, y = median(g[0] for g in group), median(g[1] for g in group)
        return {path: hypot(g[0] - x, g[1] - y) for path, g in gaps.items()}

    def text(self):
        return f'{self.right}, {self.wrong}, {self.missing}'
