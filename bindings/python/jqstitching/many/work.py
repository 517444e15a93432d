"""One run, in the process that does it."""

import contextlib
import json
import os
import shutil
import tempfile
import time

from .. import InputError, __version__, list_pictures, stitch_files
from .key import file_hash, file_stamp, run_key

PARTIAL = ".partial"


def write_json(path, document):
    # Without indentation, which takes ten times as long.
    with open(path, "w", encoding="ascii") as file:
        file.write(json.dumps(document, sort_keys=True) + "\n")


def flush(path):
    """Returns when the file or folder is on the disk."""
    descriptor = os.open(path, os.O_RDONLY)
    try:
        os.fsync(descriptor)
    finally:
        os.close(descriptor)


def without_seconds(value):
    """A report without what differs from one time to the next."""
    if isinstance(value, dict):
        return {k: without_seconds(v) for k, v in value.items() if k != "seconds"}
    return [without_seconds(v) for v in value] if isinstance(value, list) else value


def plain_report(run, result, picture):
    report = without_seconds(result.report())
    for frame in report["list"]:
        frame["name"] = frame["name"].removeprefix(run.folder + os.sep)
    report["picture"]["path"] = picture
    return report


@contextlib.contextmanager
def partial_folder(out, session):
    """A folder for what is not finished. Nobody takes it for a result, and what a killed
    process leaves in it goes when the session ends."""
    parent = os.path.join(out, PARTIAL, session)
    os.makedirs(parent, exist_ok=True)
    folder = tempfile.mkdtemp(dir=parent)
    try:
        yield folder
    finally:
        shutil.rmtree(folder, ignore_errors=True)


def write_result(run, key, files, folder):
    """Stitches the files; `run.json` is what others look at."""
    options = run.options
    result = stitch_files(files, skip_bad=options.skip_bad)
    picture = f"picture.{options.format}"
    result.save(
        os.path.join(folder, picture),
        pixel_size=options.pixel_size,
        background=options.background,
    )
    report = plain_report(run, result, picture)
    write_json(os.path.join(folder, "report.json"), report)
    result.save_report(os.path.join(folder, "report.html"))
    with open(os.path.join(folder, "thumbnail.jpg"), "wb") as file:
        file.write(result.thumbnail())
    summary = {
        "name": run.name,
        "key": key,
        "version": __version__,
        "outcome": report["outcome"],
        "frames": report["frames"],
        "placed": report["placed"],
        "doubtful": report["doubtful"],
        "size": report["picture"]["size"],
        "picture": picture,
        "picture_sha256": file_hash(os.path.join(folder, picture)),
        "report_sha256": file_hash(os.path.join(folder, "report.json")),
    }
    write_json(os.path.join(folder, "run.json"), summary)


def publish(folder, final):
    """Makes the result appear, whole. Who comes second finds the same result there."""
    for entry in os.listdir(folder):
        flush(os.path.join(folder, entry))
    flush(folder)
    try:
        os.rename(folder, final)
    except OSError:
        if not os.path.exists(os.path.join(final, "run.json")):
            raise
    flush(os.path.dirname(final))


def do_run(run, out, session):
    """The outcome of a run as plain values. Raises what makes it impossible."""
    start = time.monotonic()
    files = list_pictures(run.folder)
    stamps = [file_stamp(path) for path in files]
    key = run_key(run, files)
    final = os.path.join(out, f"{run.name}-{key[:16]}")
    kept = os.path.exists(os.path.join(final, "run.json"))
    if not kept:
        with partial_folder(out, session) as folder:
            os.chmod(folder, 0o755)
            write_result(run, key, files, folder)
            if [file_stamp(path) for path in files] != stamps:
                raise InputError("its files were changed while it was stitched")
            publish(folder, final)
    with open(os.path.join(final, "run.json"), encoding="ascii") as file:
        outcome = json.load(file)
    outcome["state"] = "kept" if kept else "finished"
    outcome["result"] = os.path.basename(final)
    outcome["seconds"] = time.monotonic() - start
    return outcome
