// A runtime file holds one value as text: written whole, read back with the value's own reader.
#pragma once

#include "qel/config/exceptions.hpp"
#include "qel/config/types.hpp"
#include "qel/i18n/convert.hpp"
#include "qel/util/native_path.hpp"

#include <boost/throw_exception.hpp>

#include <filesystem>
#include <fstream>
#include <locale>
#include <sstream>
#include <string>
#include <system_error>

namespace qel::config {

namespace detail {

/// How a T stands in a file: static put(std::ostream&, const T&) and static get(std::istream&, T&).
template <class T>
struct FileFormat;

} // namespace detail

/// Replaces the content of `file` by `value` and returns the path. Throws config_io_error; a file that could
/// be opened but not written stays behind, empty or in part.
template <class T>
Path write_file(const Path& file, const T& value) {
    std::ofstream out;
    // Whatever the global locale is: a pid with digits grouped would name another process.
    out.imbue(std::locale::classic());
    out.open(util::filesystem::native(file), std::ios_base::out | std::ios_base::trunc);
    if (!out.good()) {
        BOOST_THROW_EXCEPTION(config_io_error("error opening " + i18n::ustring_to_utf8(file.text())));
    }
    detail::FileFormat<T>::put(out, value);
    // Only the flush meets a full disk.
    out.flush();
    if (!out.good()) {
        BOOST_THROW_EXCEPTION(config_io_error("error writing " + i18n::ustring_to_utf8(file.text())));
    }
    return file;
}

/// What is in a regular file that one read takes whole; not set for others. Two reads could give the front of an old
/// value and the tail of a longer new one, if a writer comes between them.
inline optional<std::string> read_at_once(std::ifstream& in, const std::filesystem::path& name) {
    constexpr std::streamsize less_than_a_buffer = 4096;
    in.peek(); // fills the buffer
    const std::streamsize size = in.rdbuf()->in_avail();
    std::error_code ignored;
    if (!in.good() || size >= less_than_a_buffer || !std::filesystem::is_regular_file(name, ignored))
        return {};
    std::string text(static_cast<std::size_t>(size), '\0');
    in.rdbuf()->sgetn(text.data(), size);
    return text;
}

/// The value in `file`. Throws config_io_error.
template <class T>
T read_file(const Path& file) {
    const auto name = util::filesystem::native(file);
    std::ifstream stream;
    // Before the first look at the file: a locale may convert what is read.
    stream.imbue(std::locale::classic());
    stream.open(name);
    if (!stream.good()) {
        BOOST_THROW_EXCEPTION(config_io_error("error opening " + i18n::ustring_to_utf8(file.text())));
    }
    const optional<std::string> text = read_at_once(stream, name);
    std::istringstream whole(text.value_or(std::string()));
    whole.imbue(std::locale::classic());
    std::istream& in = text ? static_cast<std::istream&>(whole) : stream;
    T value{};
    detail::FileFormat<T>::get(in, value);
    // The bad bit only: a number that is none sets the fail bit, and reads as 0 on purpose. A reader that wants its
    // failure reported sets the bad bit.
    if (in.bad()) {
        BOOST_THROW_EXCEPTION(config_io_error("error reading " + i18n::ustring_to_utf8(file.text())));
    }
    return value;
}

} // namespace qel::config
