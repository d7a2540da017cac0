#include "formats/script/SamiModern.h"

namespace mova {

bool SamiModern::Recognizes(const Lines& lines, const WString& fileName) {
  return LoadsMoreThanErrors(lines, fileName);
}

WString SamiModern::WriteText(const Subtitle& subtitle, const WString& title) {
  return Write(subtitle, title, Form{u"\"", u"</P></SYNC>", u"<br />", true});
}

}  // namespace mova
