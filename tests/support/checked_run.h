// A whole run in this process, as told and with --lossless, with what must hold of every run: the
// output can be read again; where the verifier calls it different, it knows the told step that
// loses this, and never with --lossless; and the two outputs are the same, unless the log notes
// what was chosen in another way. A breach ends the process with the output on stderr.
#pragma once

#include <cstdint>
#include <span>
#include <string>

/// How many bytes choose the options of a run.
inline constexpr std::size_t optionBytes = 4;

/// Runs `text` as the input file. Without effect if it can't be read or is no design.
void runChecked(std::span<const std::uint8_t, optionBytes> options, const std::string& text);
