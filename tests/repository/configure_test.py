"""What configuring says to a Dear ImGui that it did not expect. The checkouts are made up: their headers define what
decides, their sources are empty, and nothing is compiled."""

import argparse
import pathlib
import subprocess
import tempfile
import unittest

SOURCES = ["imgui.cpp", "imgui_demo.cpp", "imgui_draw.cpp", "imgui_tables.cpp", "imgui_widgets.cpp",
           "misc/freetype/imgui_freetype.cpp"]


class ConfigureTest(unittest.TestCase):
    project = pathlib.Path()
    options: list[str] = []

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.build = pathlib.Path(folder.name) / "build"
        self.imgui = pathlib.Path(folder.name) / "imgui"

    def configure(self, *defines):
        """Whether it went well, and all that was said, in one line."""
        for name in SOURCES:
            (self.imgui / name).parent.mkdir(parents=True, exist_ok=True)
            (self.imgui / name).touch()
        lines = ['#define IMGUI_VERSION "9.9"', *(f"#define {name}" for name in defines)]
        (self.imgui / "imgui.h").write_text("\n".join(lines) + "\n")
        done = subprocess.run(
            ["cmake", "-S", self.project, "-B", self.build, f"-DIMGUI_DIR={self.imgui}", "-DQUORVANE_TESTS=OFF",
             *self.options], text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
        return done.returncode == 0, " ".join(done.stdout.split())

    def test_docking_missing(self):
        well, said = self.configure()
        self.assertFalse(well, said)
        self.assertIn(
            f"Dear ImGui at {self.imgui} has no docking, and the editor docks its views. Check out Dear ImGui's branch "
            '"docking" and give its folder with -DIMGUI_DIR=FOLDER, or leave IMGUI_DIR empty to take the pinned one.',
            said)

    def test_string_views_without_docking(self):
        well, said = self.configure("IMGUI_HAS_IMSTR")
        self.assertTrue(well, said)
        self.assertIn(
            f'Dear ImGui "9.9" with string views and without docking, {self.imgui}: view framework and module are '
            "built, the host and its tests are not", said)
        targets = subprocess.run(["cmake", "--build", self.build, "--target", "help"], text=True,
                                 stdout=subprocess.PIPE, check=True).stdout
        self.assertIn("Localization", targets)
        self.assertNotIn("quorvane-editor", targets)


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    parser.add_argument("project", type=pathlib.Path)
    arguments, ConfigureTest.options = parser.parse_known_args()
    ConfigureTest.project = arguments.project
    unittest.main(argv=["configure_test.py"])
