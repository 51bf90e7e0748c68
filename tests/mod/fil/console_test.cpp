// Messages on their way to the console.
#include "fil/console.h"

#include <gtest/gtest.h>
#include <streambuf>
#include <string>
#include <vector>

namespace ostrel {
namespace {

/// Notes what reaches it, one entry a call.
class Notes : public std::streambuf {
 public:
  Notes(char name, std::vector<std::string>& calls) : name_(name), calls_(calls) {}

 protected:
  std::streamsize xsputn(const char* text, std::streamsize length) override {
    calls_.push_back(name_ + std::string(text, static_cast<std::size_t>(length)));
    return length;
  }

 private:
  char name_;
  std::vector<std::string>& calls_;
};

TEST(OrderedConsole, GathersMessagesAndKeepsTheirOrder) {
  std::vector<std::string> calls;
  Notes outNotes('o', calls);
  Notes errNotes('e', calls);
  std::ostream out(&outNotes);
  std::ostream err(&errNotes);
  {
    OrderedConsole console({out, err});
    const Console streams = console.streams();
    streams.out << "a" << 1 << '\n';
    streams.err << "b"
                << "c";
    streams.out.put('d');
  }
  EXPECT_EQ(calls, (std::vector<std::string>{"oa1\n", "ebc", "od"}));
  calls.clear();
  {
    OrderedConsole console({out, err});
    for (int i = 0; i < 1'000'000; ++i) console.streams().err << "a missing name\n";
  }
  EXPECT_LE(calls.size(), 100U);
  std::size_t length = 0;
  for (const std::string& call : calls) length += call.size() - 1;
  EXPECT_EQ(length, 15'000'000U);
}

}  // namespace
}  // namespace ostrel
