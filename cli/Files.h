/// The files around a conversion: inputs are looked at before, outputs are replaced only as a whole.
#pragma once

#include <sys/stat.h>

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "Formats.h"

namespace mova::cli {

/// A file that can be handed to the library.
struct Input {
  std::string path;
  struct stat file;
};

/// `name` is the user's: a path, or "-" for standard input. The file exists, is readable, a regular file, and has a
/// path that the library can open. Throws a Failure with status kNoInput.
Input openInput(const std::string& name);

/// Where an output goes.
struct Destination {
  std::string path;
  /// The path is that of a device or pipe and is written to as it is; otherwise it is a file name with an extension.
  bool isStream = false;
  /// The folders that the path goes through are to be made.
  bool makeFolders = false;
};

/// The place that `output`, the text of --output, means for this input and target. Empty means beside the input. A
/// directory means a file in it, which is named after the input.
Destination chooseDestination(const Input& input, const std::string& output, const Format& target);

/// Throws a Failure with status kUsage if `path` is, by whatever name or link, the input of that name.
void refuseInputAsOutput(const std::string& path, const std::string& name, const Input& input);

/// The end of a chain of links. An output that is a link stays one: the file at the end is written.
struct LinkEnd {
  std::filesystem::path path;
  std::optional<struct stat> file;  ///< if it exists
};

/// Throws a Failure with status kCantCreate if there is no end.
LinkEnd followLinks(std::filesystem::path path);

/// Writes the text as UTF-8, the file as a whole or not at all: an existing one stays as it was until all of the new
/// one is there. Throws a Failure with status kCantCreate.
void writeFile(const std::string& path, std::u16string_view text);

/// Where writeFile() notes the name of its temporary file for as long as there is one, for a process that cleans up
/// behind one that was killed. `note` has room for a path of PATH_MAX bytes; null ends it.
void noteTemporaryFile(char* note);

/// Makes the folders that `path` goes through. Throws a Failure with status kCantCreate.
void makeFoldersFor(const std::string& path);

/// Writes the text as UTF-8 to a device or pipe. Throws a Failure with status kCantCreate.
void writeStream(const std::string& path, std::u16string_view text);

}  // namespace mova::cli
