#include "assetconnector/host/XMLPlatform.h"

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    const AC::XMLPlatform platform;
    return RUN_ALL_TESTS();
}
