/// What the Final Cut Pro X formats share: the project that they fill, and times as rational seconds.
#pragma once

#include <functional>

#include "model/Subtitle.h"
#include "movautil/WideString.h"
#include "xml/TiXMLDocument.h"

namespace mova {

/// The text of a project with the given contents of its "spine".
WString finalCutProject(WStringView version, WStringView spine);

/// The text of a title of a caption; `reference` is its attribute "ref".
WString finalCutTitle(WStringView reference);

/// Gives a title the times and the text of a caption. The text is also its name.
void fillTitle(XMLElement& title, const Paragraph& paragraph);

/// The text of the project with what `newChild` makes of each caption below `parent`. Takes away what a printer might
/// make of the document type.
WString projectText(TiXMLDocument& document, const XMLElement* parent, const Subtitle& subtitle,
                    const std::function<XMLElement*(const Paragraph&)>& newChild);

/// Time as ticks of 1/60000 or 1/2400000 second, cut, not rounded: "60000/60000s".
WString ticks(double milliseconds, int32_t base);

/// Milliseconds of "3s" or "1001/30000s". Text of any other shape is 0.
double timeFromRational(WStringView text);

}  // namespace mova
