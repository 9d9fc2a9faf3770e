// BASIC-style string helpers on byte strings. Positions are 1-based, as the
// amplifier's reply layouts are described: a reply body starts at position 3.
// Every function is total: out-of-range positions give empty results or 0,
// never an out-of-bounds read.
#pragma once

#include <string>
#include <string_view>

namespace amp {

// Number of bytes.
long Len(std::string_view s);

// Up to `length` bytes from 1-based `start`; length < 0 means "to the end".
// A start past the end gives "". A start below 1 gives "" (the classic runtime
// raises an error there, which a guarded reader turns into "keep the default").
std::string Mid(std::string_view s, long start, long length = -1);

// First `n` / last `n` bytes; n <= 0 gives "", n beyond the length gives all.
std::string Left(std::string_view s, long n);
std::string Right(std::string_view s, long n);

// 1-based position of the first occurrence of `find` in `s` at or after
// `start`, or 0. An empty `find` gives `start` when start <= Len(s)+1, as the
// classic runtime does; a start below 1 gives 0.
long InStr(std::string_view s, std::string_view find);
long InStr(long start, std::string_view s, std::string_view find);

// Blanks (0x20 only) removed from the left, the right, or both ends.
std::string LTrim(std::string_view s);
std::string RTrim(std::string_view s);
std::string Trim(std::string_view s);

std::string UCase(std::string_view s);
std::string LCase(std::string_view s);

// One byte from its code (0..255); the code of the first byte, or -1 for "".
std::string Chr(int code);
int Asc(std::string_view s);

// Printable rendering of raw bytes for traces and messages: control bytes and
// bytes above 0x7E as <STX>, <ETX>, <ACK>, <NAK>, <CR>, <LF> or <xx> in hex,
// its digits lower case ("<7f>") unless `upperHex` ("<7F>").
std::string Readable(std::string_view bytes, bool upperHex = false);

// Hex bytes separated by single blanks: "02 41 31 03 71".
std::string Hex(std::string_view bytes);

// The classic text pattern test: "*" any run of characters, "?" any one
// character, "#" one digit; every other character stands for itself. It is
// a shape test only: "**#.**#.**#.**#" takes "10.0.0.254" and "a1.b2.c3.d4"
// alike, and refuses "10.0.0".
bool Like(std::string_view text, std::string_view pattern);

}  // namespace amp
