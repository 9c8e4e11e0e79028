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
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace ZaltCatalogueTool {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void failToWrite(const std::string& path, const std::string& reason) {
  throw std::runtime_error("cannot write " + path + ": " + reason);
}

// As many as the system itself follows before it gives up on a loop.
constexpr int followedLinks = 40;

// The file at the end of `path`'s links, which is where a new file goes when
// the last link names none.
fs::path followLinks(const std::string& path) {
  fs::path at(path);
  std::error_code unknown;
  for (int links = 0; fs::is_symlink(fs::symlink_status(at, unknown)); ++links) {
    if (links == followedLinks) {
      failToWrite(path, std::strerror(ELOOP));
    }
    std::error_code error;
    const fs::path target = fs::read_symlink(at, error);
    if (error) {
      failToWrite(path, error.message());
    }
    at = target.is_absolute() ? target : at.parent_path() / target;
  }
  return at;
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

// Writes all of `bytes` and closes `file`; 0, or the system's error number.
int writeAndClose(std::FILE* file, const std::string& bytes, bool toDisk) {
  const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size() &&
                       (toDisk ? flushToDisk(file) : std::fflush(file) == 0);
  const int writeError = errno;
  if (std::fclose(file) != 0 || !written) {
    return written ? errno : writeError;
  }
  return 0;
}

// The new file takes the place of `target`, and with it the mode that a user
// gave it; 0, or the system's error number. The owner follows where the
// system lets this user give it, and the owner goes first, since a change of
// owner clears the set-user-ID bit. Windows keeps neither.
int keepModeAndOwner(const fs::path& target, std::FILE* file) {
#ifdef _WIN32
  static_cast<void>(target);
  static_cast<void>(file);
  return 0;
#else
  struct stat earlier {};
  if (stat(target.c_str(), &earlier) != 0) {
    return 0;
  }
  static_cast<void>(fchown(fileno(file), earlier.st_uid, earlier.st_gid));
  return fchmod(fileno(file), earlier.st_mode & 07777) == 0 ? 0 : errno;
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

void replaceWhole(const std::string& path, const fs::path& target, const std::string& bytes, Flush flush) {
  const fs::path temporary = temporaryBeside(target);
  std::FILE* file = std::fopen(temporary.string().c_str(), "wb");
  if (file == nullptr) {
    failToWrite(path, std::strerror(errno));
  }
  const int kept = keepModeAndOwner(target, file);
  const int written =
      kept == 0 ? writeAndClose(file, bytes, flush == Flush::ToDisk) : (std::fclose(file), kept);
  std::error_code error;
  if (written == 0) {
    replace(temporary, target, error);
  }
  if (written != 0 || error) {
    std::error_code ignored;
    fs::remove(temporary, ignored);
    failToWrite(path, written != 0 ? std::strerror(written) : error.message());
  }
}

// What reads a FIFO, or stands behind a device, is the point of naming it:
// it is opened as it is, neither created nor truncated, and never replaced.
void writeInto(const std::string& path, const std::string& bytes) {
#ifdef _WIN32
  std::FILE* file = std::fopen(path.c_str(), "wb");
#else
  const int descriptor = open(path.c_str(), O_WRONLY | O_NOCTTY | O_CLOEXEC);
  std::FILE* file = descriptor < 0 ? nullptr : fdopen(descriptor, "wb");
  if (descriptor >= 0 && file == nullptr) {
    close(descriptor);
  }
#endif
  if (file == nullptr) {
    failToWrite(path, std::strerror(errno));
  }
  const int error = writeAndClose(file, bytes, false);
  if (error != 0) {
    failToWrite(path, std::strerror(error));
  }
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

bool isExistingRegularFile(const std::string& output) {
  std::error_code unknown;
  return output != "-" && fs::is_regular_file(output, unknown);
}

// The kind of file is asked of the system, which follows every link: a link
// from /proc to a pipe names no file that a path could reach.
void writeWhole(const std::string& path, const std::string& bytes, Flush flush) {
  if (path == "-") {
    std::cout << bytes;
    return;
  }
  std::error_code unknown;
  const fs::file_status status = fs::status(path, unknown);
  if (fs::is_directory(status)) {
    failToWrite(path, std::strerror(EISDIR));
  }
  if (fs::exists(status) && !fs::is_regular_file(status)) {
    writeInto(path, bytes);
  } else {
    replaceWhole(path, followLinks(path), bytes, flush);
  }
}

}  // namespace ZaltCatalogueTool
