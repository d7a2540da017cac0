#include "model/Paragraph.h"

#include "text/Strings.h"

namespace mova {

WString Paragraph::ToString() const {
  return StartTime.ToString() + u" --> " + EndTime.ToString() + u" " + Text;
}

WStringView Paragraph::ID() const {
  if (id_.empty()) id_ = newGuid();
  return id_;
}

}  // namespace mova
