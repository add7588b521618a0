#!/usr/bin/env python3
"""A ccache that cannot write its folder is left out instead of failing each compilation: compilerCacheTest.py SOURCE_FOLDER"""
import pathlib
import subprocess
import sys
import tempfile

module = pathlib.Path(sys.argv[1]) / "cmake" / "TessalunaCompilerCache.cmake"


def launcher(ccache_lines):
    with tempfile.TemporaryDirectory() as folder:
        place = pathlib.Path(folder)
        ccache = place / "ccache"
        ccache.write_text("#!/bin/sh\n" + ccache_lines)
        ccache.chmod(0o755)
        script = place / "script.cmake"
        script.write_text(f'include("{module}")\nmessage("launcher: ${{CMAKE_CXX_COMPILER_LAUNCHER}}")\n')
        definitions = [f"-DPROJECT_BINARY_DIR={folder}", f"-DPROJECT_SOURCE_DIR={folder}", f"-DCCACHE_PROGRAM={ccache}",
                       "-DCMAKE_CXX_COMPILER=true"]
        run = subprocess.run(["cmake", *definitions, "-P", script], capture_output=True, text=True, check=True)
        return run.stderr.strip().replace(folder, ""), run.stdout


found, output = launcher('exec "$@"\n')
assert found.endswith(";/ccache") and output == "", (found, output)
found, output = launcher("echo the folder is read-only >&2\nexit 1\n")
assert found == "launcher:" and "the folder is read-only" in output, (found, output)
