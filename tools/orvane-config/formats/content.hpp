// The content of files and of standard input.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// As UTF-8 without a byte-order mark; "-" is standard input. Throws std::runtime_error with that name when it cannot be
/// read, or has no end.
std::string content_of(const std::string& path, const std::string& name);

/// The same as it is: what the system writes is in no other encoding.
std::string bytes_of(const std::string& path, const std::string& name);

/// Throws std::runtime_error with the place of the first byte that is none.
void refuse_unless_utf8(const std::string& text, const std::string& name);

/// Control characters that even a list with zero bytes between its tokens has rarely.
bool has_bytes_of_no_text(std::string_view content);

bool is_directory(const std::string& path);
bool is_there(const std::string& path);

/// With / between its parts.
std::string absolute(const std::string& path);

/// The files in a directory, sorted; without those whose names begin with a dot, and other directories. Throws
/// std::runtime_error with the directory's name when it cannot be read, or has none.
std::vector<std::string> files_in(const std::string& directory, const std::string& name,
                                  bool may_be_empty = false);

/// Whether a content is that of a program, of which `content_of` reads only the beginning. MZ alone may begin a name.
bool is_program(std::string_view content);

} // namespace orvane
