"""Finds the picture families: a module beside this one that has drawings() -> [Drawing, ...]."""
import importlib
import pathlib
import re

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parents[2]
KIT = {"geometry", "shapes", "offset", "crossing", "region", "drawing", "letters", "families", "check", "preview",
       "freeze"}


def family_names():
    return sorted(p.stem for p in HERE.glob("*.py") if p.stem not in KIT)


def drawings_of(family):
    if family not in family_names():
        raise SystemExit(f"unknown family '{family}'; the families are: {', '.join(family_names())}")
    return importlib.import_module(family).drawings()


def header_of(family):
    title = "".join(word.capitalize() for word in family.split("_"))
    return ROOT / "tessaluna" / "uikit" / "stylekit" / "listings" / f"{title}Listings.h"


def identifier(name):
    """The layer tidalLogo__word is tidalLogoWord in the header: C++ keeps double underscores to itself."""
    return re.sub("__(.)", lambda found: found.group(1).upper(), name)
