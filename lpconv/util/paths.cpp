#include <lpconv/util/paths.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstring>

namespace lpconv {

const char* baseName(const char* path) {
  const char* slash = std::strrchr(path, '/');
  return slash == nullptr ? path : slash + 1;
}

std::string dirName(const char* path) {
  return std::string(path, static_cast<std::string::size_type>(baseName(path) - path));
}

std::int64_t fileModificationTime(const std::string& path) {
  const int fd = ::open(path.c_str(), O_RDONLY);
  if (fd < 0) return -1;
  struct stat status {};
  ::fstat(fd, &status);
  ::close(fd);
  return static_cast<std::int64_t>(status.st_mtime);
}

bool isNewerThan(const std::string& a, const std::string& b) {
  const std::int64_t timeA = fileModificationTime(a);
  const std::int64_t timeB = fileModificationTime(b);
  if (timeB == -1) return timeA != -1;
  return timeB < timeA;
}

bool fileExists(const std::string& path) {
  const int fd = ::open(path.c_str(), O_RDONLY);
  if (fd < 0) return false;
  ::close(fd);
  return true;
}

const char* findSubstring(const char* text, const char* pattern) {
  return std::strstr(text, pattern);
}

}  // namespace lpconv
