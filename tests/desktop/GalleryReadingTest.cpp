// The pages of the gallery as a real client of the accessibility bus reads and operates them, from a process of its own.
#include <QAccessible>
#include <QVBoxLayout>

#include "gallery/Pages.h"
#include "gallery/startup/StartupHost.h"
#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tests/desktop/AssistiveProgram.h"
#include "tests/desktop/QtDesktop.h"

namespace {

class GalleryReading : public harness::QtDesktop {
 protected:
  // What the client reads. It ends with an error for an object that is absent or does not name its parent.
  std::string read(QWidget* content) {
    window_.resize(1000, 950);
    (new QVBoxLayout(&window_))->addWidget(content);
    window_.show();
    window_.activateWindow();
    EXPECT_TRUE(eventually([&] { return window_.isActiveWindow() && QAccessible::isActive(); }));
    settle();
    return tree();
  }
  std::string read(std::string_view page) {
    const gallery::Page* found = gallery::findPage(page);
    return found ? read(found->make([](const std::string&) {})) : "unknown page";
  }
  static std::string tree() { return harness::askAssistiveClient("tree"); }
  static std::string actionsOf(const QString& name) { return harness::askAssistiveClient("actions", {name}); }
  static int widthOf(const QString& name) {
    const std::string place = harness::askAssistiveClient("place", {name});
    return QString::fromStdString(place).split(' ').value(2).toInt();
  }
  static void act(const QString& name, const QString& action) { harness::askAssistiveClient("do", {name, action}); }
  // Where it is in the tree, each line at any depth; empty if it is found.
  static std::string missing(const std::string& tree, std::initializer_list<std::string> lines) {
    std::string result;
    for (const std::string& line : lines)
      if (tree.find(" " + line + "\n") == tree.npos) result += line + "\n";
    return result.empty() ? result : "missing:\n" + result + "in:\n" + tree;
  }

 private:
  QWidget window_;
};

TEST_F(GalleryReading, Cells) {
  EXPECT_EQ(missing(read("Cells"),
                    {"page tab list \"tabs dark\" focusable", "page tab \"Albums\" selectable selected",
                     "page tab \"Tracks\" selectable", "combo box \"By title\" focusable", "slider \"stars dark\" focusable",
                     "slider \"fixed stars dark\"", "label \"LIBRARY\"", "text \"row dark\" editable focusable"}),
            "");
  act("Tracks", "Press");
  EXPECT_EQ(missing(tree(), {"page tab \"Tracks\" focused selectable selected"}), "");
}

TEST_F(GalleryReading, ATableOfCellsAndItsHeaders) {
  EXPECT_EQ(missing(read("Cells"), {"table column header \"Title\" focusable", "slider \"Rating\" focusable",
                                    "text \"Title\" editable", "label \"Ines Calder\""}),
            "");
  EXPECT_EQ(actionsOf("Artist"), "Press\nIncrease\nDecrease\nSetFocus\n");
  act("Artist", "Press");
  const QString artist = "Artist, sorted upward";
  const int before = widthOf(artist);
  act(artist, "Increase");
  EXPECT_EQ(widthOf(artist), before + 10);
  act(artist, "SetFocus");
  EXPECT_TRUE(eventually(
      [] { return missing(tree(), {"table column header \"Artist, sorted upward\" focusable focused"}).empty(); }));
}

TEST_F(GalleryReading, Transport) {
  EXPECT_EQ(missing(read("Transport"), {"push button \"Previous\" focusable focused", "push button \"Pause\" focusable",
                                        "check box \"Shuffle\" focusable", "label \"Harbor Lights\"",
                                        "slider \"Position\" focusable", "push button \"play on, pressed\" focusable",
                                        "slider \"nothing loaded\"", "slider \"slider with tick marks\" focusable",
                                        "slider \"disabled slider\"", "slider \"level with tick marks\" focusable"}),
            "");
  EXPECT_EQ(actionsOf("Position"), "Increase\nDecrease\nSetFocus\n");
  act("Shuffle", "Press");
  EXPECT_EQ(missing(tree(), {"check box \"Shuffle\" checked focusable"}), "");
  act("Pause", "Press");
  EXPECT_EQ(missing(tree(), {"push button \"Play\" focusable"}), "");
}

TEST_F(GalleryReading, StartUp) {
  EXPECT_EQ(missing(read("Start-up"), {"push button \"Show the splash\" focusable focused", "image \"Tessaluna\"",
                                       "progress bar \"a bar\"", "progress bar \"a wheel that turns\""}),
            "");
  act("Begin a long task", "Press");
  // The report stays, however long the task takes.
  EXPECT_NE(tree().find("Task 3 begins\""), std::string::npos);
}

TEST_F(GalleryReading, BackgroundTasks) {
  const auto host = tessaluna::platform::make<gallery::StartupHost>();
  host->beginTask(100);
  host->beginTask(300);
  host->advance(4);
  EXPECT_EQ(missing(read(new tessaluna::backend::qt::QtViewWidget(host->taskBar())),
                    {"panel \"2 tasks, 35 percent\"", "progress bar \"Task 1\"", "progress bar \"Task 2\""}),
            "");
  act("Stop Task 1", "Press");
  host->advance(0.1);
  const std::string after = tree();
  EXPECT_EQ(after.find("progress bar \"Task 1\""), after.npos);
  EXPECT_NE(after.find("progress bar \"Task 2\""), after.npos);
}

}  // namespace
