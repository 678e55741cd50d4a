#include "providers/subversion/Paths.h"

#include "providers/subversion/Failure.h"
#include "providers/subversion/Pool.h"

#include <svn_dirent_uri.h>
#include <svn_path.h>
#include <svn_xml.h>

#include <algorithm>
#include <filesystem>

namespace svnscc {

namespace {

bool isUtf8(std::string_view text) { return svn_xml_is_xml_safe(text.data(), text.size()) != 0; }

/// A path with its bytes above ASCII as numbers, so that it can be shown.
std::string escaped(std::string_view text) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string result;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x20 && byte < 0x7F) {
            result += c;
        } else {
            result += "\\x";
            result += digits[byte >> 4U];
            result += digits[byte & 0xFU];
        }
    }
    return result;
}

} // namespace

std::string internalPath(const char *path) {
    std::string text = path != nullptr ? path : "";
    std::replace(text.begin(), text.end(), '\\', '/');
    if (!text.starts_with('/')) {
        throw Failure(SCC_E_FILESYNTAXERR, "\"" + escaped(text) + "\" is not the full path of a file.");
    }
    if (!isUtf8(text)) {
        throw Failure(SCC_E_FILESYNTAXERR,
                      "The name \"" + escaped(text) + "\" is not UTF-8, or has control characters.");
    }
    const Pool pool;
    return svn_dirent_canonicalize(text.c_str(), pool.get());
}

bool looksLikeUrl(std::string_view text) { return svn_path_is_url(std::string(text).c_str()) != 0; }

std::string internalUrl(std::string_view url) {
    const std::string text(url);
    if (!looksLikeUrl(text) || !isUtf8(text)) {
        throw Failure(SCC_E_PROJSYNTAXERR,
                      "\"" + escaped(text) + "\" is not the URL of a directory in a Subversion repository.");
    }
    const Pool pool;
    return svn_uri_canonicalize(svn_path_uri_from_iri(text.c_str(), pool.get()), pool.get());
}

std::string urlBelow(const std::string &url, std::string_view path) {
    const Pool pool;
    const char *relative = svn_relpath_canonicalize(std::string(path).c_str(), pool.get());
    return svn_path_url_add_component2(url.c_str(), relative, pool.get());
}

std::string baseName(const std::string &path) { return svn_dirent_basename(path.c_str(), nullptr); }

std::string directoryOf(const std::string &path) {
    const std::size_t end = path.rfind('/');
    return end == 0 || end == std::string::npos ? "/" : path.substr(0, end);
}

std::string joined(const std::string &directory, const std::string &path) {
    const Pool pool;
    return svn_dirent_join(directory.c_str(), path.c_str(), pool.get());
}

bool isWithin(const std::string &directory, const std::string &path) {
    return svn_dirent_is_ancestor(directory.c_str(), path.c_str()) != 0;
}

std::string relativeTo(const std::string &directory, const std::string &path) {
    const char *rest = svn_dirent_skip_ancestor(directory.c_str(), path.c_str());
    return rest != nullptr ? rest : path;
}

std::string commonDirectory(const std::string &one, const std::string &other) {
    const Pool pool;
    return svn_dirent_get_longest_ancestor(one.c_str(), other.c_str(), pool.get());
}

bool exists(const std::string &path) {
    std::error_code error;
    return std::filesystem::exists(std::filesystem::symlink_status(path, error));
}

} // namespace svnscc
