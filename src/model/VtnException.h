#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <utility>

namespace FTS {

/// A failure that ends the work at hand: the model cannot be read, synthesised or written. Its
/// message is meant for the user and is printed as it stands.
class VtnException : public std::exception {
 public:
  explicit VtnException(std::string initMessage) : message(std::move(initMessage)) {}

  const std::string& GetMessage() const noexcept { return message; }
  const char* what() const noexcept override { return message.c_str(); }

 private:
  std::string message;
};

/// A failure of a reader at a line of its text. A line of -1 stands for the text as a whole.
class ParseException : public VtnException {
 public:
  ParseException(std::string initMessage, std::int32_t initLine)
      : VtnException(std::move(initMessage)), line(initLine) {}

  std::int32_t GetLine() const noexcept { return line; }

 private:
  std::int32_t line;
};

}  // namespace FTS
