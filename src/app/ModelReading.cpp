#include "app/ModelReading.h"

#include "input/ParserSimX.h"
#include "input/vtnxParser.h"
#include "model/Model.h"
#include "model/VtnException.h"
#include "platform/FileSystem.h"

namespace FTS {
namespace {

std::unique_ptr<Model> ReadXmlModel(const std::string& path) {
  vtnxParser parser(path);
  if (parser.HasXmlError()) {
    throw VtnException("XML parser error: " + parser.XmlErrorText() +
                       " at row: " + std::to_string(parser.XmlErrorRow()) +
                       " column: " + std::to_string(parser.XmlErrorColumn()));
  }
  return parser.Parse();
}

}  // namespace

bool IsXmlModelFile(const std::string& path) {
  // A path too long to be made absolute still shows what it was meant for.
  const std::string extension = SplitPath(AbsolutePath(path).value_or(path)).extension;
  return extension == ".vtnx" || extension == ".xml";
}

std::unique_ptr<Model> ReadModel(const std::string& path, bool useXmlParser) {
  if (useXmlParser || IsXmlModelFile(path)) return ReadXmlModel(path);
  return CreateTextParser(path)->Parse();
}

}  // namespace FTS
