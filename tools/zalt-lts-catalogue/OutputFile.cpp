#include "OutputFile.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <random>
#include <stdexcept>
#include <system_error>

#ifdef _WIN32
#include <io.h>
#include <windows.h>
#else
#include <unistd.h>
#endif

namespace ZaltCatalogueTool {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void failToWrite(const std::string& path, const std::string& reason) {
  throw std::runtime_error("cannot write " + path + ": " + reason);
}

// Beside the target, so that the rename stays within one file system, and
// named so that two runs never meet.
fs::path temporaryBeside(const fs::path& target) {
  std::random_device entropy;
  std::string name = "." + target.filename().string();
  name += ".tmp-" + std::to_string(entropy());
  return target.parent_path() / name;
}

bool flushToDisk(std::FILE* file) {
  if (std::fflush(file) != 0) {
    return false;
  }
#ifdef _WIN32
  return _commit(_fileno(file)) == 0;
#else
  return fsync(fileno(file)) == 0;
#endif
}

// Windows' own rename fails where the target exists; replacing it is the point.
void replace(const fs::path& from, const fs::path& to, std::error_code& error) {
#ifdef _WIN32
  if (MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING) == 0) {
    error = std::error_code(static_cast<int>(GetLastError()), std::system_category());
  }
#else
  fs::rename(from, to, error);
#endif
}

}  // namespace

void refuseOutputAmongInputs(const std::string& output, const std::vector<std::string>& inputs) {
  if (output == "-") {
    return;
  }
  for (const std::string& input : inputs) {
    std::error_code unknown;
    if (input != "-" && fs::equivalent(output, input, unknown)) {
      std::string message = "the output " + output;
      message += " is the input " + input + ": write it to another file, then replace the input";
      throw std::runtime_error(message);
    }
  }
}

void writeWhole(const std::string& path, const std::string& bytes) {
  if (path == "-") {
    std::cout << bytes;
    return;
  }
  const fs::path target(path);
  std::error_code unknown;
  if (fs::is_directory(target, unknown)) {
    failToWrite(path, std::strerror(EISDIR));
  }
  const fs::path temporary = temporaryBeside(target);
  std::FILE* file = std::fopen(temporary.string().c_str(), "wb");
  if (file == nullptr) {
    failToWrite(path, std::strerror(errno));
  }
  const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size() && flushToDisk(file);
  const int writeError = errno;
  if (std::fclose(file) != 0 || !written) {
    std::error_code ignored;
    fs::remove(temporary, ignored);
    failToWrite(path, std::strerror(written ? errno : writeError));
  }
  std::error_code error;
  replace(temporary, target, error);
  if (error) {
    std::error_code ignored;
    fs::remove(temporary, ignored);
    failToWrite(path, error.message());
  }
}

}  // namespace ZaltCatalogueTool
