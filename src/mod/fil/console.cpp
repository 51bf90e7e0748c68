#include "fil/console.h"

#include <iostream>

namespace ostrel {
namespace {

constexpr std::size_t mostWaiting = std::size_t{1} << 20U;

OrderedConsole*& present() {
  static OrderedConsole* console = nullptr;
  return console;
}

}  // namespace

Console standardConsole() {
  return {std::cout, std::cerr};
}

OrderedConsole::OrderedConsole(const Console& target)
    : outPart_(*this, target.out), errPart_(*this, target.err), out_(&outPart_), err_(&errPart_) {
  present() = this;
}

OrderedConsole::~OrderedConsole() {
  present() = nullptr;
  passOn();
}

void OrderedConsole::passOnLast() {
  if (present() != nullptr) present()->passOn();
}

OrderedConsole::Part::int_type OrderedConsole::Part::overflow(int_type c) {
  if (!traits_type::eq_int_type(c, traits_type::eof())) {
    const char text = traits_type::to_char_type(c);
    console_.write(stream_, {&text, 1});
  }
  return traits_type::not_eof(c);
}

std::streamsize OrderedConsole::Part::xsputn(const char* text, std::streamsize length) {
  console_.write(stream_, {text, static_cast<std::size_t>(length)});
  return length;
}

void OrderedConsole::write(std::ostream& stream, std::string_view text) {
  if (target_ != &stream || waiting_.size() + text.size() > mostWaiting) passOn();
  target_ = &stream;
  waiting_ += text;
}

void OrderedConsole::passOn() {
  if (!waiting_.empty()) *target_ << waiting_;
  waiting_.clear();
}

}  // namespace ostrel
