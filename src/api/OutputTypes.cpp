#include <cstdlib>
#include <new>

#include "formats/FormatList.h"
#include "mova/mova.h"

namespace mova {
namespace {

/// From the C allocator, as callers who release a text themselves expect.
template <typename Unit>
Unit* allocate(size_t count) {
  void* memory = std::malloc(count * sizeof(Unit));
  if (!memory) throw std::bad_alloc();
  return static_cast<Unit*>(memory);
}

template <typename Unit>
Unit* copyText(const WString& text) {
  auto* copy = allocate<Unit>(text.size() + 1);
  size_t i = 0;
  for (char16_t unit : text) copy[i++] = static_cast<Unit>(unit);
  copy[i] = 0;
  return copy;
}

template <typename Unit>
uint32_t outputTypes(Unit**& names, Unit**& extensions) {
  FormatList list;
  buildFormatList(list);
  names = allocate<Unit*>(list.size() + 1);
  extensions = allocate<Unit*>(list.size() + 1);
  for (size_t i = 0; i < list.size(); ++i) {
    names[i] = copyText<Unit>(list[i]->Name());
    extensions[i] = copyText<Unit>(list[i]->Extension());
  }
  return static_cast<uint32_t>(list.size());
}

template <typename Unit>
uint32_t freeOutputTypes(Unit** names, Unit** extensions, uint32_t count) {
  for (uint32_t i = 0; i < count; ++i) {
    std::free(names[i]);
    std::free(extensions[i]);
  }
  std::free(names);
  std::free(extensions);
  return 0;
}

}  // namespace
}  // namespace mova

uint32_t movaOutputTypes(char16_t**& names, char16_t**& extensions) {
  return mova::outputTypes(names, extensions);
}

uint32_t movaOutputTypes(wchar_t**& names, wchar_t**& extensions) {
  return mova::outputTypes(names, extensions);
}

uint32_t movaFreeOutputTypes(char16_t**& names, char16_t**& extensions, uint32_t count) {
  return mova::freeOutputTypes(names, extensions, count);
}

uint32_t movaFreeOutputTypes(wchar_t**& names, wchar_t**& extensions, uint32_t count) {
  return mova::freeOutputTypes(names, extensions, count);
}
