#include "platform/linux/confinement/NetworkAddress.h"

#include <gtest/gtest.h>

namespace quillbrook {
namespace {

TEST(NetworkAddress, ADisplayWithAHostIsReachedThroughTheNetwork)
{
    EXPECT_TRUE(isDisplayOnNetwork("localhost:10"));
    EXPECT_TRUE(isDisplayOnNetwork("localhost:10.0"));
    EXPECT_TRUE(isDisplayOnNetwork("tcp/far.example.org:0"));
    EXPECT_TRUE(isDisplayOnNetwork("inet6/::1:0"));
    EXPECT_TRUE(isDisplayOnNetwork("::1:0"));
}

TEST(NetworkAddress, ADisplayOfThisMachineIsNot)
{
    EXPECT_FALSE(isDisplayOnNetwork(""));
    EXPECT_FALSE(isDisplayOnNetwork(":0"));
    EXPECT_FALSE(isDisplayOnNetwork(":1.0"));
    EXPECT_FALSE(isDisplayOnNetwork("unix:0"));
    EXPECT_FALSE(isDisplayOnNetwork("unix/host:0"));
    EXPECT_FALSE(isDisplayOnNetwork("/private/tmp/socket:0"));
    EXPECT_FALSE(isDisplayOnNetwork("nonsense"));
}

TEST(NetworkAddress, ABusMayBeReachedThroughTheNetworkByAnyOfItsAddresses)
{
    EXPECT_TRUE(isBusOnNetwork("tcp:host=far.example.org,port=1"));
    EXPECT_TRUE(isBusOnNetwork("unix:path=/run/bus;nonce-tcp:host=a,port=1,noncefile=b"));
    EXPECT_FALSE(isBusOnNetwork(""));
    EXPECT_FALSE(isBusOnNetwork(";"));
    EXPECT_FALSE(isBusOnNetwork("unix:path=/run/user/1000/bus"));
    EXPECT_FALSE(isBusOnNetwork("unix:path=/run/tcp:bus,guid=1;unix:abstract=tcp"));
}

} // namespace
} // namespace quillbrook
