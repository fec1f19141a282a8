#include "base/IoResult.h"

#include <system_error>

namespace quill {

IoResult IoResult::FromErrno(const std::string& what, const std::string& path, int errorNumber) {
  return Failure(what + " \"" + path + "\": " + std::generic_category().message(errorNumber));
}

}  // namespace quill
