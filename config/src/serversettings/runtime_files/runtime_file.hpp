// A runtime file contains one value as text.
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

/// The text form of a T in a file: static put(std::ostream&, const T&) and static get(std::istream&, T&).
template <class T>
struct FileFormat;

} // namespace detail

/// Replaces the content of `file` with `value` and returns the path. Throws config_io_error; a file that was opened but
/// not written remains, empty or incomplete.
template <class T>
Path write_file(const Path& file, const T& value) {
    std::ofstream out;
    // Not the global locale: a pid with grouped digits would name another process.
    out.imbue(std::locale::classic());
    out.open(util::filesystem::native(file), std::ios_base::out | std::ios_base::trunc);
    if (!out.good()) {
        BOOST_THROW_EXCEPTION(config_io_error("error opening " + i18n::ustring_to_utf8(file.text())));
    }
    detail::FileFormat<T>::put(out, value);
    // A full disk shows only when flushing.
    out.flush();
    if (!out.good()) {
        BOOST_THROW_EXCEPTION(config_io_error("error writing " + i18n::ustring_to_utf8(file.text())));
    }
    return file;
}

/// The content of a regular file that a single read gets completely; not set for other files. Two reads could give the
/// front of an old value and the end of a longer new one, if a writer comes between them.
inline optional<std::string> read_at_once(std::ifstream& in, const std::filesystem::path& name) {
    // What fills the stream's buffer may not be all of the file. Of the C++ libraries, MinGW's reads the least at once.
    constexpr std::streamsize least_buffer = 511;
    in.peek(); // fills the buffer
    const std::streamsize size = in.rdbuf()->in_avail();
    std::error_code ignored;
    if (!in.good() || size >= least_buffer || !std::filesystem::is_regular_file(name, ignored)) return {};
    std::string text(static_cast<std::size_t>(size), '\0');
    in.rdbuf()->sgetn(text.data(), size);
    return text;
}

/// The value in `file`. Throws config_io_error.
template <class T>
T read_file(const Path& file) {
    const auto name = util::filesystem::native(file);
    std::ifstream stream;
    // Before the file is opened: a locale may convert what is read.
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
    // Only the bad bit: text that is not a number sets the fail bit, and reads as 0 on purpose. A reader whose failure
    // must be reported sets the bad bit.
    if (in.bad()) {
        BOOST_THROW_EXCEPTION(config_io_error("error reading " + i18n::ustring_to_utf8(file.text())));
    }
    return value;
}

} // namespace qel::config
