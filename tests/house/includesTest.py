#!/usr/bin/env python3
"""Shows the check of the include lines small samples, right and wrong."""
import os
import tempfile
import unittest

import includes


def arrows(path, *lines):
    return includes.wrong_arrows(path, "\n".join(lines) + "\n")


class Includes(unittest.TestCase):
    def assertRight(self, path, line):
        self.assertEqual(arrows(path, line), [])

    def assertWrong(self, path, line):
        self.assertEqual(len(arrows(path, line)), 1, f"{path} may include {line}")

    def test_uikit_includes_platform_and_the_standard_only(self):
        self.assertRight("tessaluna/uikit/stylekit/Play.cpp", '#include "tessaluna/platform/graphics/NSColor.h"')
        self.assertRight("tessaluna/uikit/stylekit/Play.cpp", "#include <vector>")
        self.assertWrong("tessaluna/uikit/stylekit/Play.cpp", '#include "tessaluna/backends/raster/RasterCanvas.h"')
        self.assertWrong("tessaluna/uikit/stylekit/Play.cpp", "#include <QWidget>")
        self.assertWrong("tessaluna/uikit/stylekit/Play.cpp", "#include <unistd.h>")
        self.assertWrong("tessaluna/uikit/stylekit/Play.cpp", "#include <nlohmann/json.hpp>")
        self.assertWrong("tessaluna/uikit/stylekit/Play.cpp", '#include "gallery/Page.h"')

    def test_ready_hosts_include_the_kit_and_the_kit_none_of_them(self):
        self.assertRight("tessaluna/ready/search/Field.cpp", '#include "tessaluna/uikit/trackrow/CloseButton.h"')
        self.assertRight("tessaluna/ready/search/Field.cpp", '#include "tessaluna/platform/views/NSView.h"')
        self.assertWrong("tessaluna/ready/search/Field.cpp", '#include "tessaluna/backends/qt/QtBackend.h"')
        self.assertWrong("tessaluna/ready/search/Field.cpp", "#include <QWidget>")
        self.assertWrong("tessaluna/ready/search/Field.cpp", '#include "gallery/Page.h"')
        self.assertWrong("tessaluna/uikit/links/Link.cpp", '#include "tessaluna/ready/search/Field.h"')
        self.assertWrong("tessaluna/platform/views/NSView.cpp", '#include "tessaluna/ready/search/Field.h"')

    def test_platform_includes_neither_kit_nor_backends(self):
        self.assertRight("tessaluna/platform/views/NSView.h", '#include "tessaluna/platform/backend/Canvas.h"')
        self.assertWrong("tessaluna/platform/views/NSView.h", '#include "tessaluna/uikit/trackrow/CloseButton.h"')
        self.assertWrong("tessaluna/platform/views/NSView.cpp", '#include "tessaluna/backends/qt/QtBackend.h"')
        self.assertWrong("tessaluna/platform/views/NSView.cpp", "#include <QtGlobal>")

    def test_platform_keeps_other_libraries_to_its_sources(self):
        self.assertRight("tessaluna/platform/foundation/NSCoder.cpp", "#include <nlohmann/json.hpp>")
        self.assertWrong("tessaluna/platform/foundation/NSCoder.h", "#include <nlohmann/json.hpp>")
        self.assertRight("tessaluna/platform/text/characters.cpp", "#include <utf8proc.h>")
        self.assertWrong("tessaluna/platform/text/characters.h", "#include <utf8proc.h>")

    def test_the_seam_knows_foundation_only(self):
        self.assertRight("tessaluna/platform/backend/Path.h", '#include "tessaluna/platform/foundation/Geometry.h"')
        self.assertWrong("tessaluna/platform/backend/Path.h", '#include "tessaluna/platform/graphics/NSColor.h"')

    def test_foundation_knows_itself_only(self):
        self.assertWrong("tessaluna/platform/foundation/NSObject.h", '#include "tessaluna/platform/views/NSView.h"')

    def test_backends_never_include_the_kit(self):
        self.assertRight("tessaluna/backends/qt/QtBackend.cpp", '#include "tessaluna/platform/backend/Backend.h"')
        self.assertRight("tessaluna/backends/qt/QtBackend.cpp", "#include <QWindow>")
        self.assertWrong("tessaluna/backends/qt/QtBackend.cpp", '#include "tessaluna/uikit/stylekit/Routines.h"')
        self.assertWrong("tessaluna/backends/raster/RasterCanvas.cpp", "#include <QImage>")
        self.assertRight("tessaluna/backends/raster/Stroker.cpp", "#include <agg_conv_stroke.h>")
        self.assertRight("tessaluna/backends/raster/Stroker.h", '#include "agg_math_stroke.h"')
        self.assertWrong("tessaluna/platform/graphics/NSBezierPath.cpp", '#include "agg_math_stroke.h"')
        self.assertWrong("tessaluna/backends/recording/RecordingCanvas.cpp", '#include "tessaluna/backends/raster/Bitmap.h"')

    def test_the_folders_of_the_kit_know_each_other_only_where_listed(self):
        self.assertRight("tessaluna/uikit/trackrow/CloseButton.cpp", '#include "tessaluna/uikit/stylekit/TessalunaStyleKit.h"')
        self.assertRight("tessaluna/uikit/trackrow/CloseButton.cpp", '#include "tessaluna/uikit/trackrow/pressedLook.h"')
        self.assertRight("tessaluna/uikit/transport/Slider.cpp", '#include "tessaluna/uikit/stylekit/Listing.h"')
        self.assertWrong("tessaluna/uikit/stylekit/Play.cpp", '#include "tessaluna/uikit/trackrow/CloseButton.h"')
        self.assertWrong("tessaluna/uikit/containers/BorderedView.cpp", '#include "tessaluna/uikit/stylekit/TessalunaStyleKit.h"')
        self.assertRight("tessaluna/uikit/TessalunaUIKit.h", '#include "tessaluna/uikit/trackrow/CloseButton.h"')
        self.assertWrong("tessaluna/uikit/TessalunaUIKit.h", '#include "tessaluna/backends/qt/QtBackend.h"')

    def test_the_programs_on_top_may_include_everything(self):
        self.assertRight("gallery/main.cpp", "#include <QApplication>")
        self.assertRight("tests/uikit/PlayTest.cpp", '#include "tessaluna/backends/recording/RecordingCanvas.h"')

    def test_headers_are_named_from_the_root(self):
        self.assertWrong("tessaluna/platform/views/NSView.cpp", '#include "NSView.h"')
        self.assertWrong("tessaluna/platform/views/NSView.cpp", '#include "../../uikit/stylekit/Routines.h"')
        self.assertWrong("tessaluna/platform/views/NSView.cpp", '#include "tessaluna/platform/../uikit/stylekit/Routines.h"')

    def test_spaces_do_not_hide_an_include(self):
        self.assertWrong("tessaluna/uikit/stylekit/Play.cpp", "  #  include   <QWidget>")

    def test_a_source_begins_with_its_header(self):
        def wrong(path, text, has_header=True):
            return len(includes.wrong_start(path, text, has_header))
        own, other = '#include "tessaluna/uikit/links/Link.h"\n', "#include <string>\n"
        self.assertEqual(wrong("tessaluna/uikit/links/Link.cpp", own + other), 0)
        self.assertEqual(wrong("tessaluna/uikit/links/Link.cpp", other + own), 1)
        self.assertEqual(wrong("tessaluna/uikit/links/Link.cpp", ""), 1)
        self.assertEqual(wrong("tessaluna/uikit/links/Link.cpp", other, has_header=False), 0)

    def test_include_lines_come_before_the_code(self):
        self.assertEqual(includes.late_includes("a/B.cpp", "// What it is.\n#include <string>\n\nint b();\n"), [])
        self.assertEqual(includes.late_includes("a/B.cpp", "#include <string>\n\nvoid b() {\n#include <vector>\n}\n"),
                         ["a/B.cpp:4: vector: include lines come before the code"])

    def test_a_header_is_guarded(self):
        self.assertEqual(includes.wrong_start("a/B.h", "// What it is.\n#pragma once\n", True), [])
        self.assertEqual(len(includes.wrong_start("a/B.h", "// #pragma once\n", True)), 1)

    def test_every_header_of_the_libraries_reaches_the_one_that_refuses_an_older_language(self):
        root, includer = "#pragma once\n#include <string>\n", f'#pragma once\n#include "{includes.LANGUAGE}"\n'
        self.assertEqual(len(includes.wrong_start("tessaluna/uikit/links/Link.h", root, False)), 1)
        self.assertEqual(includes.wrong_start("tessaluna/uikit/links/Link.h", includer, False), [])
        self.assertEqual(includes.wrong_start(includes.LANGUAGE, root, False), [])
        self.assertEqual(includes.wrong_start("gallery/Page.h", root, False), [])

    def test_the_line_of_the_wrong_arrow_is_told(self):
        self.assertEqual(arrows("tessaluna/uikit/links/Link.h", "#pragma once", "", "#include <QWidget>"),
                         ["tessaluna/uikit/links/Link.h:3: QWidget: tessaluna/uikit/links may not include it"])

    def test_a_tree_with_a_wrong_arrow_or_an_unknown_folder_fails(self):
        for path, line, status in [("tessaluna/uikit/links/Link.h", "#include \"tessaluna/uikit/links/Other.h\"", 0),
                                   ("tessaluna/uikit/links/Link.h", "#include <QWidget>", 1),
                                   ("tessaluna/uikit/utils/Link.h", "#include <string>", 1)]:
            with tempfile.TemporaryDirectory() as root:
                os.makedirs(os.path.join(root, os.path.dirname(path)))
                with open(os.path.join(root, path), "w", encoding="utf-8") as file:
                    file.write("#pragma once\n" + line + "\n")
                self.assertEqual(includes.main(root), status, path)


if __name__ == "__main__":
    unittest.main()
