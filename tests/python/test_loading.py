"""Finding the shared library: the environment variable, the path installed beside the package,
and a clear error when there is none. Each case runs in an interpreter of its own, since a
process loads the library once."""

import os
import shutil
import subprocess
import sys
import tempfile
import unittest

import guidescreen_codec
from guidescreen_codec._library import ENVIRONMENT_VARIABLE, library

PACKAGE = os.path.dirname(os.path.abspath(guidescreen_codec.__file__))
LIBRARY = os.environ.get(ENVIRONMENT_VARIABLE, "")

PROGRAM = """
import guidescreen_codec, guidescreen_codec._library as loader
print(len(guidescreen_codec.operations()))
print(loader.library()._name)
"""


def run(package_parent: str, environment: dict) -> subprocess.CompletedProcess:
    env = {key: value for key, value in os.environ.items()
           if key not in (ENVIRONMENT_VARIABLE, "PYTHONPATH", "LD_LIBRARY_PATH")}
    env.update(environment, PYTHONPATH=package_parent, PYTHONDONTWRITEBYTECODE="1")
    return subprocess.run([sys.executable, "-c", PROGRAM], stdout=subprocess.PIPE,
                          stderr=subprocess.PIPE, env=env, timeout=60, text=True, check=False)


@unittest.skipUnless(LIBRARY, f"{ENVIRONMENT_VARIABLE} is not set")
class Loading(unittest.TestCase):
    def setUp(self) -> None:
        self.work = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, self.work)

    def install(self, library_path: str) -> str:
        """The package copied into an installed layout whose _library_path names
        `library_path` (relative to the package); the directory to put on the path."""
        site = os.path.join(self.work, "lib", "python3", "dist-packages")
        shutil.copytree(PACKAGE, os.path.join(site, "guidescreen_codec"),
                        ignore=shutil.ignore_patterns("__pycache__", "_library_path.py"))
        with open(os.path.join(site, "guidescreen_codec", "_library_path.py"), "w") as file:
            file.write(f"LIBRARY = {library_path!r}\n")
        return site

    def test_the_library_installed_beside_the_package(self) -> None:
        libdir = os.path.join(self.work, "lib", "x86_64-linux-gnu")
        os.makedirs(libdir)
        shutil.copy(LIBRARY, os.path.join(libdir, "libguidescreen_codec.so.0"))
        site = self.install("../../../x86_64-linux-gnu/libguidescreen_codec.so.0")
        # Moved, as a whole tree: the path is relative.
        moved = self.work + "-moved"
        shutil.move(self.work, moved)
        self.addCleanup(shutil.move, moved, self.work)
        done = run(site.replace(self.work, moved, 1), {})
        self.assertEqual(done.returncode, 0, done.stderr)
        count, loaded = done.stdout.split()
        self.assertEqual(int(count), 17)
        self.assertEqual(loaded, os.path.join(moved, "lib", "x86_64-linux-gnu",
                                              "libguidescreen_codec.so.0"))

    def test_the_environment_variable_comes_first(self) -> None:
        site = self.install("../no/such/library.so")
        done = run(site, {ENVIRONMENT_VARIABLE: LIBRARY})
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(done.stdout.split()[1], LIBRARY)
        # Named but missing: an error that names the variable, not a search elsewhere.
        done = run(site, {ENVIRONMENT_VARIABLE: os.path.join(self.work, "missing.so")})
        self.assertNotEqual(done.returncode, 0)
        self.assertIn(f"OSError: {ENVIRONMENT_VARIABLE}=", done.stderr)

    def test_no_library_anywhere_says_what_was_tried(self) -> None:
        site = self.install("../no/such/library.so")
        done = run(site, {})
        if done.returncode == 0:
            self.skipTest("a library is installed where the dynamic loader finds it")
        self.assertIn("shared library was not found", done.stderr)
        self.assertIn(os.path.join(site, "no", "such", "library.so"), done.stderr)
        self.assertIn(ENVIRONMENT_VARIABLE, done.stderr)

    def test_this_process_loaded_the_library_it_was_given(self) -> None:
        self.assertEqual(library()._name, LIBRARY)
        self.assertEqual(guidescreen_codec.version().count("."), 2)


if __name__ == "__main__":
    unittest.main()
