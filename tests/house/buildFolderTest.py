#!/usr/bin/env python3
"""Where the build folder cannot be written, ./run and ./test name it before CMake starts: buildFolderTest.py SOURCE_FOLDER"""
import pathlib
import shutil
import subprocess
import sys
import tempfile

with tempfile.TemporaryDirectory() as folder:
    clone = pathlib.Path(folder)
    (clone / "cmake").mkdir()
    script = shutil.copy(pathlib.Path(sys.argv[1]) / "cmake" / "build-preset", clone / "cmake")
    (clone / "build").write_text("a file, so that nobody can make a folder of this name\n")
    run = subprocess.run([script, "release"], capture_output=True, text=True)
    expected = f"build: the folder {clone.resolve()}/build/release cannot be written\n"
    assert (run.returncode, run.stderr, run.stdout) == (1, expected, ""), run
