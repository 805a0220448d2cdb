#pragma once

#include <memory>
#include <string>

// How the entries of a library are called that was made for 32-bit Windows; elsewhere there is one
// convention only.
#if defined(_WIN32) && !defined(_WIN64)
#define FTS_LIBRARY_CALL __stdcall
#else
#define FTS_LIBRARY_CALL
#endif

namespace FTS {

/// A library that is loaded while the program runs. It is unloaded with this object unless it was
/// told to stay.
class DynamicLibrary {
 public:
  /// Null when there is none at that path, or none that this system takes.
  static std::unique_ptr<DynamicLibrary> Load(const std::string& path);

  virtual ~DynamicLibrary() = default;

  /// Lets the library outlive this object: something in it goes on by itself.
  virtual void StayLoaded() = 0;

  /// The entry of that name as a pointer to function; null when the library has none. Names are
  /// those of 32-bit Windows, "_" + name + "@" + bytes of arguments; where a system does not
  /// decorate names, the bare name is looked up.
  template <typename Function>
  Function* Find(const char* entry) const {
    return reinterpret_cast<Function*>(FindAddress(entry));
  }

 protected:
  virtual void* FindAddress(const std::string& entry) const = 0;
};

}  // namespace FTS
