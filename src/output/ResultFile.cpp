#include "output/ResultFile.h"

#include <array>
#include <cassert>
#include <charconv>
#include <iostream>

#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "model/NumberText.h"

namespace FTS {

namespace {

constexpr std::size_t PieceSize = std::size_t{1} << 18;

}  // namespace

void ReportCutShort(const std::string& path) {
  const std::string text = "Cannot write the whole of file: " + path;
  DiagnosticLog::Instance().AddError(text);
  // A silent run, and each search is one, has no report at its end that would tell.
  if (Config::Instance().runSilent) std::cerr << text << '\n';
}

ResultFile::ResultFile() = default;

ResultFile::~ResultFile() { Close(); }

bool ResultFile::Open(const std::string& initPath) {
  Close();
  path = initPath;
  stream.clear();  // A file that failed must not take the next one with it.
  stream.open(path);
  return stream.is_open();
}

void ResultFile::Close() {
  if (!stream.is_open()) return;
  Flush();
  stream.close();
  // Asked for once, here: the stream stays failed from the first piece that did not fit.
  if (!stream) ReportCutShort(path);
}

ResultFile& ResultFile::operator<<(std::string_view text) {
  if (!stream.is_open()) return *this;
  pending += text;
  if (pending.size() >= PieceSize) Flush();
  return *this;
}

ResultFile& ResultFile::operator<<(int number) {
  std::array<char, 16> buffer{};
  const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
  assert(error == std::errc());
  return *this << std::string_view(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
}

ResultFile& ResultFile::operator<<(double number) { return *this << FormatDouble(number); }

void ResultFile::Flush() {
  stream.write(pending.data(), static_cast<std::streamsize>(pending.size()));
  pending.clear();
}

}  // namespace FTS
