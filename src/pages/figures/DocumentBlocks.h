#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quillbrook {

/// A part of a document that stands by itself.
struct DocumentBlock {
    enum class Kind : std::uint8_t { title, heading, paragraph, item };

    Kind kind = Kind::paragraph;
    std::string text{};

    bool operator==(const DocumentBlock&) const = default;
};

/// Reads a document that the program carries. It is written in a small part of Markdown: one title
/// ("# "), headings ("## "), items ("- ") and paragraphs, each on one line, and nothing within a
/// line.
std::vector<DocumentBlock> documentBlocks(std::string_view markdown);

} // namespace quillbrook
