#include "model/Subtitle.h"

#include <algorithm>

#include "model/Arithmetic.h"
#include "text/Strings.h"

namespace mova {

void Subtitle::CalculateFrameNumbers(double frameRate) {
  const auto toFrame = [frameRate](const TimeCode& time) {
    return lowInt32(rounded(time.TotalMilliseconds / 1000.0 * frameRate));
  };
  for (auto& paragraph : Paragraphs) {
    paragraph->StartFrame = toFrame(paragraph->StartTime);
    paragraph->EndFrame = toFrame(paragraph->EndTime);
  }
  for (size_t i = 0; i + 1 < Paragraphs.size(); ++i) {
    const int32_t next = Paragraphs[i + 1]->StartFrame;
    int32_t& end = Paragraphs[i]->EndFrame;
    if (end == next || end == wrappingAdd(next, 1)) end = wrappingSubtract(next, 1);
  }
}

void Subtitle::Renumber(int32_t first) {
  for (auto& paragraph : Paragraphs) {
    paragraph->Number = first;
    first = wrappingAdd(first, 1);
  }
}

int32_t Subtitle::RemoveEmptyLines() {
  if (Paragraphs.empty()) return 0;
  const auto kept =
      std::remove_if(Paragraphs.begin() + 1, Paragraphs.end(), [](const auto& p) { return trimView(p->Text).empty(); });
  const auto removed = static_cast<int32_t>(Paragraphs.end() - kept);
  Paragraphs.erase(kept, Paragraphs.end());
  Renumber(Paragraphs.front()->Number);
  return removed;
}

void Subtitle::AddTimeToAllParagraphs(double milliseconds) const {
  for (const auto& paragraph : Paragraphs) {
    Paragraph copy = *paragraph;
    copy.StartTime.TotalMilliseconds += milliseconds;
    copy.EndTime.TotalMilliseconds += milliseconds;
  }
}

Paragraph& Subtitle::Append(Paragraph paragraph) {
  return *Paragraphs.emplace_back(std::make_unique<Paragraph>(std::move(paragraph)));
}

}  // namespace mova
