#include "pages/figures/DocumentBlocks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <regex>

namespace quillbrook {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Kind = DocumentBlock::Kind;

/// The one document that the program carries.
std::vector<DocumentBlock> privacyStatement()
{
    std::ifstream stream(QUILLBROOK_DOCS "/privacy_quillbrook.md");
    return documentBlocks(std::string(std::istreambuf_iterator<char>(stream), {}));
}

TEST(DocumentBlocks, AreReadLineByLine)
{
    EXPECT_THAT(documentBlocks("# Title\n\nSome text.\n\n## Heading\n\n- one - two\n- #three"),
        ElementsAre(DocumentBlock{Kind::title, "Title"},
            DocumentBlock{Kind::paragraph, "Some text."}, DocumentBlock{Kind::heading, "Heading"},
            DocumentBlock{Kind::item, "one - two"}, DocumentBlock{Kind::item, "#three"}));
}

TEST(DocumentBlocks, TakeWhatIsNoMarkForText)
{
    EXPECT_THAT(documentBlocks("#none\n-none\n### none"),
        ElementsAre(DocumentBlock{Kind::paragraph, "#none"},
            DocumentBlock{Kind::paragraph, "-none"}, DocumentBlock{Kind::paragraph, "### none"}));
    EXPECT_THAT(documentBlocks(""), IsEmpty());
    EXPECT_THAT(documentBlocks("\n\n"), IsEmpty());
}

TEST(DocumentBlocks, ReadAllThatThePrivacyStatementUses)
{
    const auto blocks = privacyStatement();
    ASSERT_GT(blocks.size(), 10U);
    EXPECT_EQ(blocks.front(), (DocumentBlock{Kind::title, "隐私政策"}));
    for (std::size_t place = 0; place < blocks.size(); ++place) {
        const DocumentBlock& block = blocks[place];
        EXPECT_EQ(block.kind == Kind::title, place == 0) << block.text;
        // What the window would show as it is written: marks of other Markdown, a line's rest.
        EXPECT_FALSE(
            std::regex_search(block.text, std::regex(R"(^\s|[*_`\[\]|<>]{2}|^[#*>+\d]|`)")))
            << block.text;
        if (block.kind != Kind::title && block.kind != Kind::heading) {
            EXPECT_TRUE(block.text.ends_with("。")) << block.text; // a line is a whole
        }
    }
}

} // namespace
} // namespace quillbrook
