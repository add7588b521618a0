#!/usr/bin/env python3
"""What ./run and ./test do before CMake starts, about the folder that they build in: buildFolderTest.py SOURCE_FOLDER"""
import fcntl
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

source = pathlib.Path(sys.argv[1])


def clone_in(folder):
    clone = pathlib.Path(folder).resolve()
    (clone / "cmake").mkdir()
    shutil.copy(source / "cmake" / "build-preset", clone / "cmake")
    return clone


def a_folder_that_cannot_be_written_is_named():
    with tempfile.TemporaryDirectory() as folder:
        clone = clone_in(folder)
        (clone / "build").write_text("a file, so that nobody can make a folder of this name\n")
        run = subprocess.run([clone / "cmake" / "build-preset", "release"], capture_output=True, text=True)
        expected = f"build: the folder {clone}/build/release cannot be written\n"
        assert (run.returncode, run.stderr, run.stdout) == (1, expected, ""), run


def a_second_build_waits_for_the_first():
    with tempfile.TemporaryDirectory() as folder:
        clone = clone_in(folder)
        (clone / "build" / "release").mkdir(parents=True)
        cmake = clone / "cmake" / "cmake"
        cmake.write_text(f"#!/bin/sh\necho called >> '{clone}/calls'\n")
        cmake.chmod(0o755)
        with open(clone / "build" / "release" / ".lock", "w") as first:
            fcntl.flock(first, fcntl.LOCK_EX)
            run = subprocess.Popen([clone / "cmake" / "build-preset", "release"], stdout=subprocess.PIPE, text=True,
                                   env=dict(os.environ, PATH=f"{cmake.parent}:{os.environ['PATH']}"))
            line = run.stdout.readline()
            assert line == f"build: waiting for another build in {clone}/build/release\n", line
            assert not (clone / "calls").exists()
        assert run.wait() == 0 and (clone / "calls").read_text() == "called\ncalled\n"
        run.stdout.close()


a_folder_that_cannot_be_written_is_named()
a_second_build_waits_for_the_first()
