// The console streams of the file reader, whose messages go past the log.
#pragma once

#include <array>
#include <iosfwd>
#include <ostream>
#include <streambuf>
#include <string>

namespace ostrel {

/// Where a reader writes its messages; the streams outlive the reader.
struct Console {
  std::ostream& out;
  std::ostream& err;
};

/// Standard output and standard error.
Console standardConsole();

/// Two streams behind one buffer. Both get their bytes in the order of writing, as they would
/// without it, but a million messages cost a few calls of the system. Everything has been passed on
/// when the object is gone. There is one at a time.
class OrderedConsole {
 public:
  explicit OrderedConsole(const Console& target);
  OrderedConsole(const OrderedConsole&) = delete;
  OrderedConsole& operator=(const OrderedConsole&) = delete;
  ~OrderedConsole();

  Console streams() { return {out_, err_}; }

  /// Passes on what waits, in a process that is about to end without destructors.
  static void passOnLast();

 private:
  /// One of the two streams; its text waits in the buffer of the console.
  class Part : public std::streambuf {
   public:
    Part(OrderedConsole& console, std::ostream& stream) : console_(console), stream_(stream) {}

   protected:
    int_type overflow(int_type c) override;
    std::streamsize xsputn(const char* text, std::streamsize length) override;

   private:
    OrderedConsole& console_;
    std::ostream& stream_;
  };

  void write(std::ostream& stream, std::string_view text);
  void passOn();

  std::string waiting_;
  std::ostream* target_ = nullptr;  // of the text that waits
  Part outPart_;
  Part errPart_;
  std::ostream out_;
  std::ostream err_;
};

}  // namespace ostrel
