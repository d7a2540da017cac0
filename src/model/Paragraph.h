/// One timed caption.
#pragma once

#include <cstdint>

#include "model/RareText.h"
#include "model/TimeCode.h"
#include "movautil/WideString.h"

namespace mova {

struct Paragraph {
  Paragraph() = default;
  /// Start and end in milliseconds.
  Paragraph(WString text, double start, double end) : Text(std::move(text)), StartTime{start}, EndTime{end} {}
  Paragraph(TimeCode start, TimeCode end, WString text) : Text(std::move(text)), StartTime(start), EndTime(end) {}

  /// Start, " --> ", end, " ", text.
  WString ToString() const;

  /// The caption's identifier, in the form of newGuid(). It is drawn when it is first asked for: drawing one for every
  /// paragraph of every trial would cost more than reading the file. A copy taken later bears the same one.
  WStringView ID() const;

  int32_t Number = 0;
  WString Text;  ///< Lines are separated by CR LF; may hold tags such as "<i>" and brace codes such as "{\an8}".
  TimeCode StartTime;
  TimeCode EndTime;
  int32_t StartFrame = 0;  ///< Set by Subtitle::CalculateFrameNumbers only.
  int32_t EndFrame = 0;    ///< Set by Subtitle::CalculateFrameNumbers only.
  bool Reserved = false;   ///< Copied with the paragraph, used by nothing.
  RareText Extra;          ///< Sub Station Alpha's Style column, SAMI's class, a summary in Timed Text.
  bool IsComment = false;  ///< A Sub Station Alpha "Comment:" event.
  RareText Actor;          ///< Sub Station Alpha's Name column.
  RareText Effect;         ///< Sub Station Alpha's Effect column.
  int32_t Layer = 0;       ///< Sub Station Alpha's layer.
  RareText Language;       ///< Timed Text: language of the enclosing division.
  RareText Style;          ///< Timed Text: style id of the paragraph.

 private:
  mutable RareText id_;
};

}  // namespace mova
