// The command line of the converter.
#include "convert/command.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

#include "support/netlists.h"

namespace ostrel::convert {
namespace {

class ConvertCommand : public ::testing::Test {
 protected:
  void SetUp() override { std::filesystem::create_directories(folder_); }
  void TearDown() override { std::filesystem::remove_all(folder_); }

  int run(std::vector<std::string> words, const std::string& input = "") {
    std::istringstream in(input);
    out_.str("");
    err_.str("");
    return convertMain(words, in, out_, err_);
  }
  std::string file(const std::string& name, const std::string& text = "") const {
    if (!text.empty()) std::ofstream(folder_ / name) << text;
    return (folder_ / name).string();
  }

  std::filesystem::path folder_ = std::filesystem::path(testing::TempDir()) / "ostrel_convert";
  std::ostringstream out_;
  std::ostringstream err_;
};

TEST_F(ConvertCommand, ExitCodesAndOutput) {
  const std::string good = file("good.tt2", designs[1]);
  const std::string bad = file("bad.tt2", "nothing\n");
  const std::string sorry =
      file("sorry.tt2", "#$ PINS 2 a Q\n.i 1\n.o 1\n.ilb a\n.ob Q.D\n.p 1\n1 1\n.end\n");
  const std::string old = file("old.v", "old\n");
  EXPECT_EQ(run({good, file("new.v")}), 0);
  EXPECT_EQ(err_.str(), "note: " + good + ": don't-cares get a value, for the target has none\n");
  EXPECT_TRUE(std::filesystem::exists(folder_ / "new.v"));
  EXPECT_EQ(run({sorry, old}), 1);
  EXPECT_EQ(err_.str(), sorry + ": Q: this flip-flop has no clock\n");
  EXPECT_EQ(run({bad, old}), 2);
  EXPECT_TRUE(err_.str().starts_with(bad + ":1: text that is passed over: nothing\n"));
  EXPECT_EQ(std::filesystem::file_size(old), 4U);
  EXPECT_EQ(run({"--from=tt2", "--to", "blif", "-", "-"}, designs[1]), 0);
  EXPECT_TRUE(out_.str().starts_with(".model top\n"));
  for (const std::vector<std::string>& words :
       std::vector<std::vector<std::string>>{{},
                                             {good},
                                             {good, "x.json"},
                                             {"x.v", old},
                                             {"-", "-"},
                                             {"--terms", "0", good, old},
                                             {"--flatten", good, old},
                                             {"--to", "png", good, old},
                                             {file("none.tt2"), old},
                                             {good, file("no/such/folder.v")}}) {
    EXPECT_EQ(run(words), 2) << joined(words);
    EXPECT_NE(err_.str().find("ostrel-convert: "), std::string::npos) << err_.str();
  }
}

}  // namespace
}  // namespace ostrel::convert
