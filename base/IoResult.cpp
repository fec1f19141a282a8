#include "base/IoResult.h"

#include <system_error>

namespace quill {

IoResult IoResult::FromErrno(StringId what, const std::string& path, int errorNumber) {
  return Failure(FormatText(what, {path, std::generic_category().message(errorNumber)}));
}

IoResult IoResult::Refusal(StringId what, const std::string& path, StringId reason) {
  return Failure(FormatText(what, {path, Text(reason)}));
}

}  // namespace quill
