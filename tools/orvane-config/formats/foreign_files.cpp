// Files that are certainly no flags.
#include "formats/format_table.hpp"
#include "formats/source_files.hpp"

#include <algorithm>

namespace orvane {
namespace {

struct Foreign {
    std::string_view line_begins, looks_like;
    bool may_have_flags = false;
};
constexpr Foreign foreign_files[] = {
    {"worker_processes ", "an nginx configuration"},
    {"server {", "an nginx configuration"},
    {"upstream ", "an nginx configuration"},
    {"LoadModule ", "an Apache configuration"},
    {"<VirtualHost ", "an Apache configuration"},
    {"frontend ", "an HAProxy configuration"},
    {"-----BEGIN ", "a key or certificate"},
    {"configuration accepted", "an answer of orvane-config", true},
    {"```", "Markdown", true},
    {"USER ", "a list of processes", true},
    {"UID ", "a list of processes", true},
    {"PID ", "a list of processes", true},
    {"set -x ", "a variable of fish", true},
    {"set -gx ", "a variable of fish", true},
    {"Start-Process ", "a script of PowerShell", true},
    {"Windows Registry Editor", "an export of the registry", true},
    {"#!/usr/bin/python", "a script of Python", true},
    {"#!/usr/bin/env python", "a script of Python", true},
    {"<?xml", "XML", true},
    {"<", "XML or HTML", true},
};

/// Also one of another hyphen, or of Windows: what it means is explained.
bool may_be_flag(const ReadToken& token) {
    return token.text.find_first_of("-/") == 0 || token.text.starts_with("\xE2");
}

} // namespace

std::string foreign_kind(std::string_view text) {
    for (const Foreign& one : foreign_files) {
        const std::string begin(one.line_begins);
        const bool is_first_only = begin[0] == '<' || begin[0] == '-';
        if (first_line_of(text).starts_with(begin) || text.starts_with(begin) ||
            (!is_first_only && text.find('\n' + begin) != text.npos))
            return "this looks like " + std::string(one.looks_like) +
                   (one.may_have_flags ? "; give a file with only the command that starts the server"
                                       : "; the server reads flags only: 'orvane-config explain NAME' finds "
                                         "the flag for a setting");
    }
    return {};
}

bool has_no_flags(const ReadTokens& tokens) {
    return std::ranges::none_of(tokens, may_be_flag);
}

} // namespace orvane
