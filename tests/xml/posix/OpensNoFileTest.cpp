#include "assetconnector/xml/MessageParser.h"
#include "tests/support/HostTest.h"

#include <filesystem>
#include <fstream>
#include <linux/limits.h>
#include <sys/inotify.h>
#include <unistd.h>

namespace {

TEST(MessageParser, OpensNoFile)
{
    const auto path = std::filesystem::temp_directory_path() / ("opens-no-file-" + std::to_string(getpid()));
    std::ofstream(path) << "<!ENTITY x 'read'>";
    const int watch = inotify_init1(IN_NONBLOCK);
    ASSERT_GE(inotify_add_watch(watch, path.c_str(), IN_OPEN), 0);
    const std::string id = " SYSTEM \"file://" + path.string() + "\"";
    for (const std::string& text :
         {"<!DOCTYPE a" + id + "><a/>", "<!DOCTYPE a [<!ENTITY x" + id + ">]><a>&x;</a>",
          "<!DOCTYPE a [<!ENTITY % x" + id + "> %x;]><a>&x;</a>",
          "<a xmlns:i=\"http://www.w3.org/2001/XMLSchema-instance\" i:noNamespaceSchemaLocation=\"file://" +
              path.string() + "\"/>",
          "<a><i:include xmlns:i=\"http://www.w3.org/2001/XInclude\" href=\"file://" + path.string() +
              "\"/></a>"})
        static_cast<void>(AC::MessageParser().Parse(U(text)));
    char event[sizeof(inotify_event) + NAME_MAX + 1];
    EXPECT_EQ(read(watch, event, sizeof(event)), -1) << "the file was opened";
    static_cast<void>(std::ifstream(path).get());
    EXPECT_GT(read(watch, event, sizeof(event)), 0) << "nobody watches";
    close(watch);
    std::filesystem::remove(path);
}

}  // namespace
