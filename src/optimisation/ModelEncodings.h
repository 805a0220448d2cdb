#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "optimisation/Encoding.h"
#include "platform/XmlDocument.h"

namespace FTS {

/// A random encoding of one of the types of `EncodingType`.
std::unique_ptr<Encoding> CreateEncoding(Model& model, std::int32_t type);

/// A form that encodings are saved in.
struct EncodingForm {
  std::string_view element;
  std::int32_t type;  ///< One of `EncodingType`, the two tree forms told apart.
};

/// That of the encoding which is the child of an "Encoding" of a saved search. Throws
/// `VtnException` when it is of no known form.
const EncodingForm& FormOf(XmlElement element);

/// That encoding. Throws `VtnException` when it is of no known form or does not fit the model.
std::unique_ptr<Encoding> LoadEncoding(Model& model, XmlElement element);

}  // namespace FTS
