#include "pages/figures/DocumentBlocks.h"

#include <algorithm>
#include <array>

namespace quillbrook {

namespace {

struct Opening {
    std::string_view mark;
    DocumentBlock::Kind kind;
};

constexpr std::array kOpenings = {
    Opening{"# ", DocumentBlock::Kind::title},
    Opening{"## ", DocumentBlock::Kind::heading},
    Opening{"- ", DocumentBlock::Kind::item},
};

DocumentBlock blockOf(std::string_view line)
{
    for (const Opening& opening : kOpenings) {
        if (line.starts_with(opening.mark)) {
            return {opening.kind, std::string(line.substr(opening.mark.size()))};
        }
    }
    return {DocumentBlock::Kind::paragraph, std::string(line)};
}

} // namespace

std::vector<DocumentBlock> documentBlocks(std::string_view markdown)
{
    std::vector<DocumentBlock> blocks;
    while (!markdown.empty()) {
        const std::string_view line = markdown.substr(0, markdown.find('\n'));
        markdown.remove_prefix(std::min(markdown.size(), line.size() + 1));
        if (!line.empty()) {
            blocks.push_back(blockOf(line));
        }
    }
    return blocks;
}

} // namespace quillbrook
