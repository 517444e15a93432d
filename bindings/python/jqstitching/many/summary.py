"""What is told about all runs when it is over: a table for programs, a page for people."""

import csv
import html
import io
import os
import tempfile
import urllib.parse

COLUMNS = ["folder", "state", "outcome", "frames", "placed", "left_out", "doubtful", "width",
           "height", "seconds", "attempts", "result", "picture_sha256", "report_sha256", "why"]

STYLE = """body{font:15px sans-serif;margin:2em}table{border-collapse:collapse}
td,th{padding:4px 10px;text-align:left;border-bottom:1px solid #ccc}td img{max-height:96px}
.failed,.timed{color:#b00020}.some{color:#a05a00}"""


def row_of(run, outcome):
    row = {name: outcome.get(name, "") for name in COLUMNS}
    row["folder"] = run.folder
    if "frames" in outcome:
        row["left_out"] = outcome["frames"] - outcome["placed"]
        row["width"], row["height"] = outcome["size"]["width"], outcome["size"]["height"]
    if "seconds" in outcome:
        row["seconds"] = f"{outcome['seconds']:.3f}"
    return row


def table(rows):
    text = io.StringIO()
    writer = csv.DictWriter(text, COLUMNS, lineterminator="\n")
    writer.writeheader()
    writer.writerows(rows)
    return text.getvalue()


def counts(outcomes):
    """How the runs ended, such as "7 finished, 2 kept, 1 failed"."""
    order = ["finished", "kept", "failed", "timed out", "not reached"]
    states = [outcome["state"] for outcome in outcomes]
    return ", ".join(f"{states.count(s)} {s}" for s in order if s in states)


def line(outcome):
    """How one run ended, in a sentence."""
    if "outcome" not in outcome:
        return f"{outcome['state']}: {outcome['why']}" if "why" in outcome else outcome["state"]
    doubt = f", {outcome['doubtful']} doubtful" if outcome["doubtful"] else ""
    placed = f"{outcome['placed']} of {outcome['frames']} frames placed{doubt}"
    return f"{outcome['state']}, {outcome['outcome']}: {placed}"


def cells(run, outcome):
    name, text = html.escape(run.name), html.escape(line(outcome))
    if "result" not in outcome:
        return f"<td></td><td>{name}</td><td class={outcome['state'].split()[0]}>{text}</td>"
    base = urllib.parse.quote(os.fsencode(outcome["result"]))
    picture = f"{base}/{outcome['picture']}"
    mark = "all" if outcome["outcome"] == "all placed" else "some"
    size = f"{outcome['size']['width']} x {outcome['size']['height']}"
    return (
        f'<td><a href="{picture}"><img src="{base}/thumbnail.jpg" alt="" loading="lazy"></a></td>'
        f'<td><a href="{base}/report.html">{name}</a></td><td class={mark}>{text}</td>'
        f"<td>{size}</td><td>{outcome['seconds']:.1f} s</td>"
    )


def page(runs, outcomes):
    rows = "\n".join(f"<tr>{cells(*pair)}</tr>" for pair in zip(runs, outcomes))
    title = f"{len(runs)} runs: {counts(outcomes)}"
    return (
        f'<!DOCTYPE html>\n<html lang="en"><head><meta charset="utf-8"><title>{title}</title>\n'
        f"<style>{STYLE}</style></head><body>\n<h1>{title}</h1>\n<table>\n"
        "<tr><th></th><th>run</th><th>verdict</th><th>pixels</th><th>time</th></tr>\n"
        f"{rows}\n</table>\n</body></html>\n"
    )


def write_whole(path, text):
    """The file appears complete or not at all."""
    descriptor, partial = tempfile.mkstemp(dir=os.path.dirname(path), prefix=".summary-")
    try:
        with open(descriptor, "w", encoding="utf-8", errors="surrogateescape", newline="") as file:
            file.write(text)
            file.flush()
            os.fsync(file.fileno())
        os.chmod(partial, 0o644)
        os.replace(partial, path)
    except BaseException:
        os.unlink(partial)
        raise


def write_summary(out, runs, outcomes):
    rows = [row_of(run, outcome) for run, outcome in zip(runs, outcomes)]
    write_whole(os.path.join(out, "summary.csv"), table(rows))
    write_whole(os.path.join(out, "index.html"), page(runs, outcomes))
