// Which nets stay nodes.
#include "convert/structure/fold.h"

#include <gtest/gtest.h>

#include "support/netlists.h"

namespace ostrel::convert {
namespace {

std::string rippleAdder(int bits) {
  std::string ports = "input c=2";
  std::string cells;
  for (int i = 0; i < bits; ++i) {
    const auto net = [&](int k) { return std::to_string(10 * i + k); };
    const std::string carry = i == 0 ? "2" : std::to_string(10 * (i - 1) + 13);
    ports += ";input a" + std::to_string(i) + "=" + net(10) + ";input b" + std::to_string(i) + "=" +
             net(11) + ";output s" + std::to_string(i) + "=" + net(12);
    const std::string inputs = " A=" + net(10) + "," + net(11) + "," + carry;
    cells += (i == 0 ? "" : ";") + std::string("$lut:10010110") + inputs + " Y=" + net(12) +
             ";$lut:11101000" + inputs + " Y=" + net(13);
  }
  return jsonText(ports, cells);
}

std::size_t countOf(const std::string& text, const std::string& word) {
  std::size_t count = 0;
  for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + 1))
    ++count;
  return count;
}

TEST(Convert, NodesStayWhereFoldingCosts) {
  const std::string adder = rippleAdder(6);
  const auto rows = [&](Folding folding) {
    const std::string text = converted(adder, Format::Json, Format::Tt2, folding);
    const std::size_t at = text.find("\n.p ");
    return at == std::string::npos ? 0 : std::stoi(text.substr(at + 4));
  };
  EXPECT_LT(rows({}), 60);
  EXPECT_GT(rows({16, true}), 200);
  const std::string huge = converted(rippleAdder(20), Format::Json, Format::Tt2, {16, true});
  EXPECT_NE(huge.find("the flat design is too large"), std::string::npos) << huge.substr(0, 200);
  // A control of two terms stays a node; a limit of one term keeps every sum; `keep` keeps a net.
  const std::string text =
      jsonText("input a=2;input b=3;input c=4;output q=5;output y=6",
               "$_OR_ A=2 B=3 Y=7;$_DFFE_PP_ C=4 D=2 E=7 Q=5;$_AND_ A=2 B=3 Y=8;"
               "$_AND_ A=8 B=4 Y=6");
  EXPECT_EQ(countOf(converted(text, Format::Json, Format::Tt2), "#$ NODES 1 n7\n"), 1U);
  std::string kept = text;
  kept.insert(kept.rfind("}}}}"), R"("mine":{"bits":[8],"attributes":{"keep":1}})");
  EXPECT_EQ(countOf(converted(kept, Format::Json, Format::Tt2), "#$ NODES 2 n7 mine\n"), 1U);
}

}  // namespace
}  // namespace ostrel::convert
