/// A text that few paragraphs have.
#pragma once

#include <memory>

#include "movautil/WideString.h"

namespace mova {

/// Takes the room of a pointer for as long as it is empty; files have captions by the hundred thousand.
class RareText {
 public:
  RareText() = default;
  RareText(const RareText& other) { *this = WStringView(other); }
  RareText(RareText&&) = default;
  RareText& operator=(const RareText& other) { return *this = WStringView(other); }
  RareText& operator=(RareText&&) = default;
  RareText& operator=(WStringView text) {
    text_ = text.empty() ? nullptr : std::make_unique<const WString>(text);
    return *this;
  }
  ~RareText() = default;

  /// Valid until the next change.
  operator WStringView() const { return text_ ? WStringView(*text_) : WStringView(); }
  bool empty() const { return !text_; }

  friend bool operator==(const RareText& text, WStringView other) { return WStringView(text) == other; }

 private:
  std::unique_ptr<const WString> text_;
};

}  // namespace mova
