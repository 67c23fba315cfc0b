#include "platform/linux/shells/SwayMessages.h"

#include <gtest/gtest.h>

namespace quillbrook {
namespace {

TEST(SwayMessages, AreReadAsTheyAreWritten)
{
    SwayReader reader;
    reader.append(swayMessage(SwayMessageType::getTree, "{}"));
    reader.append(swayMessage(SwayMessageType::windowEvent, ""));
    const auto tree = reader.next();
    ASSERT_TRUE(tree);
    EXPECT_TRUE(tree->is(SwayMessageType::getTree));
    EXPECT_EQ(tree->payload, "{}");
    const auto event = reader.next();
    ASSERT_TRUE(event);
    EXPECT_TRUE(event->is(SwayMessageType::windowEvent));
    EXPECT_EQ(event->payload, "");
    EXPECT_FALSE(reader.next());
    EXPECT_FALSE(reader.isBroken());
}

TEST(SwayMessages, ComeInPiecesOfAnySize)
{
    SwayReader reader;
    const std::string bytes = swayMessage(SwayMessageType::subscribe, "[\"window\"]");
    for (std::size_t i = 0; i + 1 < bytes.size(); ++i) {
        reader.append(bytes.substr(i, 1));
        EXPECT_FALSE(reader.next());
    }
    reader.append(bytes.substr(bytes.size() - 1));
    EXPECT_TRUE(reader.next());
}

TEST(SwayMessages, AStrangersStreamIsBroken)
{
    SwayReader reader;
    reader.append("GET / HTTP/1.1\r\n\r\n");
    EXPECT_FALSE(reader.next());
    EXPECT_TRUE(reader.isBroken());
}

TEST(SwayMessages, AMessageBeyondMeasureIsBroken)
{
    SwayReader reader;
    reader.append(std::string("i3-ipc") + "\xFF\xFF\xFF\x7F" + std::string(4, '\0'));
    EXPECT_FALSE(reader.next());
    EXPECT_TRUE(reader.isBroken());
}

} // namespace
} // namespace quillbrook
