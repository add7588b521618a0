// What the tool says of command lines that make no sense: one line each.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/tools/artwork/ToolRun.h"

namespace artwork {
namespace {

using testing::HasSubstr;

struct Mistake {
  std::vector<std::string> arguments;
  std::string message;
};

class MistakenCommandLine : public testing::TestWithParam<Mistake> {};

TEST_P(MistakenCommandLine, GetsOneLineAndNoFile) {
  const ToolFolder folder;
  const ToolRun run = folder.run(GetParam().arguments);
  EXPECT_EQ(run.status, 2);
  EXPECT_EQ(run.output, "");
  EXPECT_EQ(run.errors, "tessaluna-artwork: " + GetParam().message + "\n");
  EXPECT_THAT(folder.files(), testing::IsEmpty());
}

std::vector<std::string> render(std::vector<std::string> more) {
  more.insert(more.begin(), {"render", "-o", "a.png"});
  return more;
}

INSTANTIATE_TEST_SUITE_P(
    Words, MistakenCommandLine,
    testing::Values(Mistake{{}, "a command is missing: list, ops, render or sheet; --help explains them"},
                    Mistake{{"rendr", "Play"}, "unknown command 'rendr'; did you mean render?"},
                    Mistake{{"ops"}, "the NAME of a routine is missing"},
                    Mistake{{"ops", "Play", "Stop"}, "'Stop' is one word too many"},
                    Mistake{{"ops", "drawLeftArow"}, "there is no routine 'drawLeftArow'; did you mean drawLeftArrow?"},
                    Mistake{{"ops", "lftarrow"}, "there is no routine 'lftarrow'; did you mean drawLeftArrow?"},
                    Mistake{{"ops", "drawPlayWithFrame:"},
                            "there is no routine 'drawPlayWithFrame:'; did you mean drawPlay?"},
                    Mistake{{"ops", "xyzzyxyzzyxyzzy"},
                            "there is no routine 'xyzzyxyzzyxyzzy'; `tessaluna-artwork list` prints the names"},
                    Mistake{{"ops", ""}, "there is no routine ''; `tessaluna-artwork list` prints the names"},
                    Mistake{{"ops", "two\nlines of it"},
                            "there is no routine 'two?lines of it'; `tessaluna-artwork list` prints the names"}));

INSTANTIATE_TEST_SUITE_P(
    Options, MistakenCommandLine,
    testing::Values(
        Mistake{{"list", "--jsno"}, "unknown option '--jsno'; did you mean --json?"},
        Mistake{{"list", "-x"}, "unknown option '-x'"},
        Mistake{{"ops", "Play", "--frmae", "0,0,1,1"}, "drawPlay has no flag '--frmae'; did you mean --frame?"},
        Mistake{{"ops", "LeftArrow", "--isOver", "true"},
                "drawLeftArrow has no flag '--isOver'; it has --enabled, --isPressed"},
        Mistake{{"ops", "LeftArrow", "--ispresed", "true"},
                "drawLeftArrow has no flag '--ispresed'; did you mean --isPressed?"},
        Mistake{{"ops", "Play", "--sprocket", "true"}, "drawPlay has no flag '--sprocket'; it has none"},
        Mistake{{"ops", "LeftArrow", "--enabled", "yes"}, "--enabled: 'yes' is neither true nor false"},
        Mistake{{"ops", "LeftArrow", "--enabled"}, "--enabled needs true or false"},
        Mistake{{"ops", "LeftArrow", "--enabled", "--isPressed", "true"}, "--enabled needs true or false"},
        Mistake{{"ops", "LeftArrow", "--enabled", "true", "--enabled", "true"}, "--enabled is given twice"},
        Mistake{{"ops", "Play", "--frame"}, "--frame needs a value"},
        Mistake{{"ops", "Play", "--frame", "0,0,1,1", "--frame", "0,0,1,1"}, "--frame is given twice"},
        Mistake{{"render", "Play"}, "-o FILE.png or -o FILE.svg is missing"},
        Mistake{{"render", "Play", "-o"}, "-o needs a value"},
        Mistake{{"render", "Play", "-o", "x.gif"}, "-o: 'x.gif' ends in neither .png nor .svg"},
        Mistake{{"render", "Play", "-o", ""}, "-o: '' ends in neither .png nor .svg"},
        Mistake{{"render", "Play", "-o", "png"}, "-o: 'png' ends in neither .png nor .svg"},
        Mistake{{"render", "Play", "-o", "--image"}, "-o needs a value"},
        Mistake{render({"Play", "--frame", "0,0,1,1", "--size", "1x1"}), "--size and --frame exclude each other"},
        Mistake{render({"Play", "--image"}), "--image: drawPlay has no image routine"},
        Mistake{render({"LeftArrow", "--image", "--frame", "0,0,1,1"}), "--image takes a --size and no --frame"}));

INSTANTIATE_TEST_SUITE_P(
    Numbers, MistakenCommandLine,
    testing::Values(Mistake{{"ops", "Play", "--frame", "0,0,nan,1"}, "--frame: 'nan' is no finite number"},
                    Mistake{{"ops", "Play", "--frame", "inf,0,1,1"}, "--frame: 'inf' is no finite number"},
                    Mistake{{"ops", "Play", "--frame", "0,0,1e999,1"}, "--frame: '1e999' is no finite number"},
                    Mistake{{"ops", "Play", "--frame", "0,0,1,1x"}, "--frame: '1x' is no finite number"},
                    Mistake{{"ops", "Play", "--frame", "0, 0,1,1"}, "--frame: ' 0' is no finite number"},
                    Mistake{{"ops", "Play", "--frame", "0,0,1,"}, "--frame: '' is no finite number"},
                    Mistake{{"ops", "Play", "--frame", "0,0,1"}, "--frame: '0,0,1' is no X,Y,W,H"},
                    Mistake{{"ops", "Play", "--frame", "0,0,1,1,1"}, "--frame: '0,0,1,1,1' is no X,Y,W,H"},
                    Mistake{{"ops", "Play", "--frame", "0,0,-1,1"}, "--frame: '0,0,-1,1' has a negative width or height"},
                    Mistake{{"ops", "Play", "--frame", "0,0,1e200,1"}, "--frame: '1e200' is too large"},
                    Mistake{render({"Play", "--size", "16"}), "--size: '16' is no WxH"},
                    Mistake{render({"Play", "--size", "16x16x16"}), "--size: '16x16x16' is no WxH"},
                    Mistake{render({"Play", "--size", "0x16"}), "--size: '0x16' needs a width and height above 0"},
                    Mistake{render({"Play", "--size", "16x-16"}), "--size: '16x-16' needs a width and height above 0"},
                    Mistake{render({"Play", "--size", "infx1"}), "--size: 'inf' is no finite number"},
                    Mistake{render({"Play", "--scale", "0"}), "--scale: '0' is not between 0.1 and 16"},
                    Mistake{render({"Play", "--scale", "0.09"}), "--scale: '0.09' is not between 0.1 and 16"},
                    Mistake{render({"Play", "--scale", "16.01"}), "--scale: '16.01' is not between 0.1 and 16"},
                    Mistake{render({"Play", "--scale", "nan"}), "--scale: 'nan' is no finite number"},
                    Mistake{render({"Play", "--scale", "2 "}), "--scale: '2 ' is no finite number"},
                    Mistake{render({"Play", "--background", "blue"}),
                            "--background: 'blue' is none of none, light, dark and #rrggbb"},
                    Mistake{render({"Play", "--background", "#12345g"}),
                            "--background: '#12345g' is none of none, light, dark and #rrggbb"},
                    Mistake{render({"Play", "--background", "#1234567"}),
                            "--background: '#1234567' is none of none, light, dark and #rrggbb"}));

TEST(CommandLine, HelpListsAllCommands) {
  const ToolFolder folder;
  for (const char* word : {"--help", "-h", "help"}) {
    const ToolRun run = folder.run({word});
    EXPECT_EQ(run.status, 0);
    for (const char* command : {"list", "ops", "render"})
      EXPECT_THAT(run.output, HasSubstr(std::string("tessaluna-artwork ") + command + " "));
  }
}

TEST(CommandLine, HelpOfOneCommandDescribesIt) {
  const ToolFolder folder;
  const ToolRun run = folder.run({"render", "--help"});
  EXPECT_EQ(run.status, 0);
  EXPECT_THAT(run.output, HasSubstr("--background none|light|dark|#rrggbb"));
  EXPECT_THAT(run.output, testing::Not(HasSubstr("--json")));
}

}  // namespace
}  // namespace artwork
