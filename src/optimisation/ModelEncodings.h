#pragma once

#include <cstdint>
#include <memory>

#include "optimisation/Encoding.h"
#include "platform/XmlDocument.h"

namespace FTS {

/// A random encoding of one of the types of `EncodingType`.
std::unique_ptr<Encoding> CreateEncoding(Model& model, std::int32_t type);

/// The encoding that stands as the child of an "Encoding" of a saved search. Throws `VtnException`
/// when it is of no known form or does not fit the model.
std::unique_ptr<Encoding> LoadEncoding(Model& model, XmlElement element);

}  // namespace FTS
