#!/usr/bin/python3
"""Reads a TIFF with a reader that shares no code with the program, and tells what it saw.

usage: read_tiff.py FILE [FOLDER]

Prints JSON; with FOLDER, also writes the pixels of every level as FOLDER/level_N.raw.
"""
import json
import sys
import xml.etree.ElementTree as xml

import tifffile


def pixels_element(text):
    """The attributes of the Pixels element of an OME-XML."""
    for element in xml.fromstring(text).iter():
        if element.tag.endswith("}Pixels"):
            return dict(element.attrib)
    return {}


with tifffile.TiffFile(sys.argv[1]) as file:
    page = file.pages[0]
    levels = file.series[0].levels
    seen = {
        "ome": file.is_ome,
        "big": file.is_bigtiff,
        "pages": len(file.pages),
        "subifds": len(page.subifds or []),
        "levels": [list(level.shape) for level in levels],
        "tiles": [[level.pages[0].tilelength, level.pages[0].tilewidth] for level in levels],
        "compression": page.compression.name,
        "photometric": page.photometric.name,
        "resolution": [page.tags[tag].value[0] / page.tags[tag].value[1]
                       for tag in ("XResolution", "YResolution") if tag in page.tags],
    }
    if "ResolutionUnit" in page.tags:
        seen["unit"] = page.tags["ResolutionUnit"].value.name
    if file.is_ome:
        seen["pixels"] = pixels_element(file.ome_metadata)
    print(json.dumps(seen))
    if len(sys.argv) > 2:
        for number, level in enumerate(levels):
            level.asarray().tofile(f"{sys.argv[2]}/level_{number}.raw")
