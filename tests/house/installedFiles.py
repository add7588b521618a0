#!/usr/bin/env python3
"""Building the target tessaluna_installed makes every built file that is installed: installedFiles.py BUILD_FOLDER"""
import pathlib
import re
import subprocess
import sys


def ninja(build, *arguments):
    return subprocess.run(["ninja", "-C", build, "-t", *arguments], check=True, capture_output=True, text=True).stdout.splitlines()


def main():
    build = pathlib.Path(sys.argv[1])
    made = {line.rsplit(": ", 1)[0] for line in ninja(build, "targets", "all")}
    scripts = "".join(script.read_text() for script in build.rglob("cmake_install.cmake"))
    inside = re.findall('"' + re.escape(str(build)) + '/([^"$;]+)"', scripts)
    installed = {name for name in inside if name in made and not name.endswith("cmake_install.cmake")}
    graph = "\n".join(ninja(build, "graph", "tessaluna_installed"))
    missing = sorted(installed - set(re.findall(r'\[label="([^"]+)"\]', graph)))
    for name in missing:
        print(f"{name} is installed, but tessaluna_installed does not build it")
    if len(installed) < 5:
        print(f"only {len(installed)} built files are installed: the installation is not found")
    return 1 if missing or len(installed) < 5 else 0


sys.exit(main())
