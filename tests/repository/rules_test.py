#!/usr/bin/env python3
"""Each rule finds what it is there for, and leaves alone what is right."""

import json
import sys
import tempfile
import unittest
from pathlib import Path

sys.dont_write_bytecode = True
import rules  # noqa: E402


class Rules(unittest.TestCase):
    def setUp(self):
        self._folder = tempfile.TemporaryDirectory()
        self.root = Path(self._folder.name)

    def tearDown(self):
        self._folder.cleanup()

    def write(self, name, text=""):
        path = self.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text)

    def test_a_module_may_include_framework_utilities_and_host_interface(self):
        self.write("editor/EditorView.h")
        self.write("engine/Utils/StrHash.h")
        self.write("host/include/QuorvaneEditor/ProjectFile.h")
        self.write("plugin/A.cpp", '#include "EditorView.h"\n#include "Utils/StrHash.h"\n'
                                   '#include "QuorvaneEditor/ProjectFile.h"\n#include <vector>\n')
        self.assertEqual(rules.arrows(self.root), [])

    def test_a_module_may_not_include_the_host(self):
        self.write("host/document/Journal.h")
        self.write("plugin/A.cpp", '#include "document/Journal.h"\n')
        self.assertEqual(rules.arrows(self.root), [
            "plugin/A.cpp: includes host/document/Journal.h, but plugin may only know engine, host/include, editor"])

    def test_the_host_may_not_include_the_module(self):
        self.write("plugin/LocalizationView.h")
        self.write("host/app/Main.cpp", '  #  include <LocalizationView.h>\n')
        self.assertEqual(len(rules.arrows(self.root)), 1)

    def test_the_framework_may_not_include_the_module_that_uses_it(self):
        self.write("plugin/LocalizationView.h")
        self.write("editor/Ui/Ui.cpp", '#include "../../plugin/LocalizationView.h"\n')
        self.assertEqual(len(rules.arrows(self.root)), 1)

    def test_compat_knows_nobody(self):
        self.write("engine/Utils/StrHash.h")
        self.write("compat/src/A.cpp", '#include "Utils/StrHash.h"\n')
        self.assertEqual(len(rules.arrows(self.root)), 1)

    def test_a_header_beside_the_source_wins_over_one_of_the_same_name_elsewhere(self):
        self.write("plugin/Names.h")
        self.write("host/document/Names.h")
        self.write("plugin/A.cpp", '#include "Names.h"\n')
        self.assertEqual(rules.arrows(self.root), [])

    def test_everything_may_include_corrade_wherever_it_comes_from(self):
        self.write("compat/include/Corrade/Containers/String.h")
        self.write("engine/Utils/A.h", '#include <Corrade/Containers/String.h>\n')
        self.assertEqual(rules.arrows(self.root), [])

    def test_no_gui_and_no_opengl_in_the_project_library(self):
        self.write("host/document/A.cpp", '#include <imgui.h>\n#include <Magnum/GL/Texture.h>\n')
        self.assertEqual(len(rules.arrows(self.root)), 2)

    def test_one_loader_of_opengl_only(self):
        self.write("host/app/A.cpp", '#include <epoxy/gl.h>\n')
        self.write("compat/src/A.cpp", '#include <epoxy/gl.h>\n')
        self.assertEqual(len(rules.arrows(self.root)), 1)

    def test_only_one_header_knows_the_branches_of_the_gui_library(self):
        self.write("editor/ImGuiText.h", "#ifdef IMGUI_HAS_IMSTR\n")
        self.write("editor/Ui/Basic.cpp", "#ifdef IMGUI_HAS_IMSTR\n")
        self.assertEqual(len(rules.one_place(self.root)), 1)

    def test_a_source_needs_a_test_of_its_stem(self):
        self.write("editor/Change.cpp")
        self.write("editor/ChangeManager.cpp")
        self.write("tests/editor/ChangeManagerTest.cpp")
        self.assertEqual(len(rules.untested(self.root)), 1)
        self.write("tests/editor/ChangeMergingTest.cpp")
        self.assertEqual(rules.untested(self.root), [])

    def test_a_source_without_a_test_needs_a_reason(self):
        self.write("host/app/main.cpp")
        self.write("tests/repository/untested.txt", "host/app/main.cpp: \n")
        self.assertEqual(rules.untested(self.root), ["untested.txt: host/app/main.cpp: no reason given"])
        self.write("tests/repository/untested.txt", "# why\n\nhost/app/main.cpp: started by the end-to-end tests\n")
        self.assertEqual(rules.untested(self.root), [])

    def test_a_reason_that_is_no_longer_needed_goes(self):
        self.write("editor/Change.cpp")
        self.write("tests/editor/ChangeTest.cpp")
        self.write("tests/repository/untested.txt", "editor/Change.cpp: none yet\nhost/Gone.cpp: too\n")
        self.assertEqual(rules.untested(self.root), ["untested.txt: editor/Change.cpp: has a test file now",
                                                     "untested.txt: host/Gone.cpp: there is no such file"])

    def test_a_source_that_no_target_compiles_is_found(self):
        self.write("tests/editor/ATest.cpp")
        self.write("tests/editor/BTest.cpp")
        self.write("build/compile_commands.json", json.dumps([
            {"directory": str(self.root / "build"), "file": "../tests/editor/ATest.cpp", "command": ""}]))
        self.assertEqual(rules.uncompiled(self.root, self.root / "build"),
                         ["tests/editor/BTest.cpp: no target compiles it"])

    def test_words_of_the_workplace_are_found(self):
        lines = ["// see Part " + "2.1", "// as the " + "specification says", "# in /work/" + "main",
                 "fixes issue " + "#3", "https://" + "registry.example.org"]
        self.write("editor/A.cpp", "\n".join(lines) + "\n")
        self.assertEqual([line.split(":")[1] for line in rules.words(self.root)], ["1", "2", "3", "4", "5"])

    def test_ordinary_words_are_not(self):
        self.write("docs/A.md", "A part of the work, specified in RFC 6901; works/as expected.\n")
        self.assertEqual(rules.words(self.root), [])

    def test_the_form_of_text_is_held(self):
        self.write("editor/A.cpp", "int a;\t\nint b; \nint c;")
        self.assertEqual(rules.text_form(self.root), [
            "editor/A.cpp: does not end with one newline", "editor/A.cpp:1: has a tab",
            "editor/A.cpp:2: ends with a blank"])

    def test_a_header_is_included_once(self):
        self.write("editor/A.h", "int a();\n")
        self.write("editor/B.h", "#pragma once\n")
        self.assertEqual(rules.text_form(self.root), ["editor/A.h: has no #pragma once"])

    def test_generated_folders_do_not_count(self):
        self.write("build/release/A.h", "")
        self.write(".deps/x/A.h", "")
        self.assertEqual(rules.files_of(self.root), [])


if __name__ == "__main__":
    unittest.main()
