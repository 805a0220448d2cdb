#include "support/ZipWriter.h"

#include <minizip/zip.h>
#include <zlib.h>

#include <stdexcept>

namespace FTS {

void WriteZip(const std::string& path, const std::vector<ZipItem>& items) {
  const zipFile archive = zipOpen64(path.c_str(), APPEND_STATUS_CREATE);
  if (!archive) throw std::runtime_error("Cannot make the archive " + path);
  bool sound = true;
  for (const ZipItem& item : items) {
    const zip_fileinfo info{};
    sound = sound &&
            zipOpenNewFileInZip(archive, item.name.c_str(), &info, nullptr, 0, nullptr, 0, nullptr,
                                Z_DEFLATED, Z_DEFAULT_COMPRESSION) == ZIP_OK &&
            zipWriteInFileInZip(archive, item.data.data(),
                                static_cast<unsigned>(item.data.size())) == ZIP_OK &&
            zipCloseFileInZip(archive) == ZIP_OK;
  }
  if (zipClose(archive, nullptr) != ZIP_OK || !sound) {
    throw std::runtime_error("Cannot write the archive " + path);
  }
}

}  // namespace FTS
