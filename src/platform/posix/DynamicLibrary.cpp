#include "platform/DynamicLibrary.h"

#include <dlfcn.h>

namespace FTS {

namespace {

/// "_Name@8" is "Name" here.
std::string PlainName(const std::string& entry) {
  const std::size_t start = entry.starts_with('_') ? 1 : 0;
  return entry.substr(start, entry.find('@') - start);
}

class LoadedLibrary : public DynamicLibrary {
 public:
  explicit LoadedLibrary(void* initHandle) : handle(initHandle) {}
  ~LoadedLibrary() override {
    if (!staysLoaded) dlclose(handle);
  }

  void StayLoaded() override { staysLoaded = true; }

 protected:
  void* FindAddress(const std::string& entry) const override {
    return dlsym(handle, PlainName(entry).c_str());
  }

 private:
  void* handle;  // Never null.
  bool staysLoaded = false;
};

}  // namespace

std::unique_ptr<DynamicLibrary> DynamicLibrary::Load(const std::string& path) {
  void* const handle = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  return handle ? std::make_unique<LoadedLibrary>(handle) : nullptr;
}

}  // namespace FTS
