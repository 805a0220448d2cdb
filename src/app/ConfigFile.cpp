#include "app/Config.h"
#include "model/VtnException.h"

namespace FTS {

void Config::LoadOrCreate(const std::string& path) {
  throw VtnException("Configuration files cannot be read by this version: " + path);
}

}  // namespace FTS
