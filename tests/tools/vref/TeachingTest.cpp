// What a search that found nothing says of other types and products.
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "RunningTool.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using ::testing::HasSubstr;

TEST(TeachingTest, AnEntityOfAnotherTypeOrProductIsNamedWithTheSearchThatFindsIt) {
    struct Case {
        std::vector<std::string> arguments;
        std::string complaint;
        std::string lesson;
        std::string command;
    };
    const Case cases[] = {
        {{"Table", "--type", "function"},
         "no function is called \"Table\"\n",
         "of another type there is: Table (class)\n",
         "vref find --exact Table\n"},
        {{"filter", "--product", "veltra"},
         "nothing is called \"filter\" in veltra\n",
         "in another product there is: filter (brisk), filter (lumora), filter (qix)\n",
         "vref find --exact filter\n"},
        {{"filter", "--type", "3", "--type", "class", "--product", "veltra"},
         "no method or class is called \"filter\" in veltra\n",
         "of another type in another product there is: filter (function, brisk), ",
         "vref find --exact filter\n"},
        {{"Table", "--type", "function", "--product", "veltra"},
         "no function is called \"Table\" in veltra\n",
         "of another type there is: Table (class)\n",
         "vref find --exact --product veltra Table\n"},
        {{"TABLE", "--type", "function"},
         "no function is called \"TABLE\"\n",
         "in any case there is: table\n",
         "vref find --ignore-case --type function TABLE\n"},
        {{"TABLE", "--type", "event", "--product", "qix"},
         "no event is called \"TABLE\" in qix\n",
         "in any case, of any type and product there is: table (function, veltra), ",
         "vref find --ignore-case TABLE\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(::testing::PrintToString(c.arguments));
        std::vector<std::string> arguments = {"find", "--exact"};
        arguments.insert(arguments.end(), c.arguments.begin(), c.arguments.end());
        const ToolRun run = runTool(arguments);
        EXPECT_EQ(run.status, 1);
        EXPECT_THAT(run.messages, HasSubstr(c.complaint));
        EXPECT_THAT(run.messages, HasSubstr(c.lesson));
        EXPECT_THAT(run.messages, HasSubstr(c.command));
    }
}

TEST(TeachingTest, ATypeByAnotherWordIsPointedToItsName) {
    struct Case {
        const char* typed;
        const char* meant;
    };
    const Case cases[] = {{"exception", "class"},   {"Exceptions", "class"},
                          {"module", "package"},    {"attribute", "property"},
                          {"functoin", "function"}, {"methods", "method"},
                          {"enumer", "enumeration"}};
    for (const auto& c : cases) {
        const ToolRun run = runTool({"find", "x", "--type", c.typed});
        EXPECT_EQ(run.status, 2) << c.typed;
        EXPECT_THAT(run.messages, HasSubstr(std::string("did you mean --type ") + c.meant + "?"))
            << c.typed;
    }
    EXPECT_THAT(runTool({"find", "x", "--type", "bogus"}).messages,
                HasSubstr("\"bogus\"; there is: function, class"));
}

TEST(TeachingTest, AProductThatThereIsNotIsAnsweredWithThoseThereAre) {
    const ToolRun run = runTool({"find", "x", "--product", "a/b"});
    EXPECT_EQ(run.status, 2);
    EXPECT_THAT(run.messages, HasSubstr("no product \"a/b\"; installed are: veltra, brisk"));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
