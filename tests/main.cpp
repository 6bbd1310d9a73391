#include <gtest/gtest.h>
#include <xercesc/util/PlatformUtils.hpp>

int main(int argc, char** argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    xercesc::XMLPlatformUtils::Initialize();
    const int result = RUN_ALL_TESTS();
    xercesc::XMLPlatformUtils::Terminate();
    return result;
}
