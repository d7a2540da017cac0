/// Fixed shapes of text, such as the time lines of formats. A shape says the same as a POSIX expression that is
/// anchored at the start and has neither choices nor optional parts, at a fraction of the cost of a search.
#pragma once

#include <algorithm>

#include "text/Strings.h"

namespace mova {

/// Whether the text begins with the shape, in which "0" stands for any digit and any other unit for itself:
/// "00:00,000" is the expression "^\d\d:\d\d,\d\d\d".
constexpr bool startsWithShape(WStringView text, WStringView shape) {
  if (text.size() < shape.size()) return false;
  for (size_t i = 0; i < shape.size(); ++i) {
    if (shape[i] == u'0' ? !isDigit(text[i]) : text[i] != shape[i]) return false;
  }
  return true;
}

/// Whether the text ends at the position. As the subject of a search, it ends in front of a zero unit.
constexpr bool endsAt(WStringView text, size_t position) {
  return position == text.size() || text[position] == 0;
}

/// As startsWithShape, with "$" behind the expression.
constexpr bool hasShape(WStringView text, WStringView shape) {
  return startsWithShape(text, shape) && endsAt(text, shape.size());
}

/// Walks over a text of shapes and runs. No shape that follows a run may begin with a unit of the run, so that there is
/// one way only to walk.
class ShapeWalk {
 public:
  explicit constexpr ShapeWalk(WStringView text) : text_(text) {}

  /// Steps over the shape.
  constexpr bool Shape(WStringView shape) {
    if (!startsWithShape(text_.substr(position_), shape)) return false;
    position_ += shape.size();
    return true;
  }

  /// Steps over the longest run of the units, of one unit at least.
  constexpr bool Run(WStringView units) {
    const size_t end = std::min(text_.find_first_not_of(units, position_), text_.size());
    if (end == position_) return false;
    position_ = end;
    return true;
  }

  constexpr bool AtEnd() const { return endsAt(text_, position_); }
  constexpr size_t Position() const { return position_; }

 private:
  WStringView text_;
  size_t position_ = 0;
};

}  // namespace mova
