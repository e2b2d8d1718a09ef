// What the parser makes of questions.
#include <cstdint>
#include <ostream>
#include <set>
#include <string>
#include <string_view>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fl/i18n/utf.hpp"
#include "property/RefEntityType.hpp"
#include "reference/ask/Question.hpp"
#include "reference/ask/QuestionError.hpp"
#include "reference/ask/Rung.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using ask::Place;
using ask::Question;
using ask::QuestionError;
using ::testing::HasSubstr;

std::string joined(const std::vector<ask::Term>& terms) {
    std::string text;
    for (const auto& term : terms) {
        text += text.empty() ? "" : " ";
        for (std::size_t at = 0; at < term.components.size(); ++at) {
            const std::string component = fl::i18n::toUtf8(term.components[at]);
            text += (at > 0 ? "." : "") + (at < term.hints ? "(" + component + ")" : component);
        }
    }
    return text;
}

// "call:a.b word | filters": only what there is.
std::string dump(const Question& question) {
    std::string text;
    const auto add = [&text](const std::string& label, const std::string& what) {
        if (!what.empty())
            text += (text.empty() ? "" : "; ") + label + what;
    };
    add("calls ", joined(question.calls()));
    add("", joined(question.terms()));
    for (const auto& phrase : question.phrases())
        add("phrase ", fl::i18n::toUtf8(phrase));
    for (const auto& word : question.excluded())
        add("without ", fl::i18n::toUtf8(word));
    for (const auto type : question.types())
        add("type ", property::RefEntityType::enumToString(type));
    for (const auto& product : question.products())
        add("product ", fl::i18n::toUtf8(product.name));
    if (question.place() != Place::Anywhere)
        add("in ", question.place() == Place::Names      ? "names"
                   : question.place() == Place::Purposes ? "purposes"
                                                         : "texts");
    if (question.wantsDeprecated())
        add("is ", *question.wantsDeprecated() ? "deprecated" : "current");
    return text;
}

struct Case {
    const char16_t* question;
    const char* expected;
};

void PrintTo(const Case& c, std::ostream* out) {
    *out << fl::i18n::toUtf8(c.question);
}

class QuestionTest : public ::testing::TestWithParam<Case> {};

TEST_P(QuestionTest, IsTakenApart) {
    EXPECT_EQ(dump(Question::parse(GetParam().question)), GetParam().expected)
        << fl::i18n::toUtf8(GetParam().question);
}

INSTANTIATE_TEST_SUITE_P(
    Words, QuestionTest,
    ::testing::Values(Case{u"read csv", "read csv"},
                      Case{u"  how do I sort a list? ", "how do I sort a list"},
                      Case{u"os.path.join", "os.path.join"}, Case{u"Path::exists", "Path.exists"},
                      Case{u"obj->member x#y a/b", "obj.member x.y a.b"},
                      Case{u"`read_csv`, please.", "read_csv please"},
                      Case{u"the list's end", "the list end"}, Case{u"@property", "property"},
                      Case{u"a . b .. c.", "a b c"}, Case{u"is:: in", "is in"},
                      Case{u"--limit -5", "limit 5"}, Case{u"x - y", "x y"}, Case{u"x -", "x"},
                      Case{u"表を作る", "表を作る"}, Case{u"the list\u2019s end", "the list end"},
                      Case{u"list'size", "list size"}, Case{u"a<b> c", "a b c"},
                      Case{u"<int>::x", "int x"}, Case{u"x<y;z>::w", "x y z w"},
                      Case{u"In [1 x", "In 1 x"}, Case{u"from here to there", "from here to there"},
                      Case{u"what is from here import", "what is from here import"},
                      Case{u"from here import", "from here import"}));

INSTANTIATE_TEST_SUITE_P(
    Filters, QuestionTest,
    ::testing::Values(
        Case{u"mean type:method", "mean; type method"},
        Case{u"TYPE:Class,function x", "x; type class; type function"},
        Case{u"x product:scipy product:\"my own\"", "x; product scipy; product my own"},
        Case{u"in:text kernel density", "kernel density; in texts"},
        Case{u"in:name x", "x; in names"}, Case{u"x in:purpose", "x; in purposes"},
        Case{u"is:deprecated x", "x; is deprecated"}, Case{u"x is:current", "x; is current"},
        Case{u"sort -list", "sort; without list"}, Case{u"sort -$list", "sort; without $list"},
        Case{u"sort -a.b c", "sort c; without a.b"},
        Case{u"\"kernel density\"", "phrase kernel density"},
        Case{u"\"kernel density\". plot", "plot; phrase kernel density"},
        Case{u"x type:,method,", "x; type method"}, Case{u"in::name x", "in.name x"},
        Case{u"\"kernel density\" plot", "plot; phrase kernel density"}, Case{u"\" \" x", "x"}));

INSTANTIATE_TEST_SUITE_P(
    Code, QuestionTest,
    ::testing::Values(
        Case{u"pd.read_csv(\"x.csv\")", "calls pd.read_csv"},
        Case{u">>> os.path.join(", "calls os.path.join"},
        Case{u"In [12]: x = np.linalg.norm(a - b, ord=2)", "calls np.linalg.norm"},
        Case{u"df.groupby('a').agg({'b': 'sum'})", "calls (groupby).agg df.groupby"},
        Case{u"sorted(d.items(), key=f)", "calls sorted d.items"},
        Case{u"print(json.dumps(x))", "calls json.dumps print"}, Case{u"print(x)", "calls print"},
        Case{u"', '.join(names)", "calls str.join"}, Case{u"\"a b\".split()", "calls str.split"},
        Case{u"[3, 1].append(2)", "calls list.append"}, Case{u"{}.items()", "calls dict.items"},
        Case{u"df['a'].value_counts()", "calls value_counts"},
        Case{u"df.groupby('a')['b'].agg(f)", "calls (groupby).agg df.groupby"},
        Case{u"df.iloc[0]", "calls df.iloc"}, Case{u"self.fit(x)", "calls fit"},
        Case{u"for x in range(10):", "calls range; x"},
        Case{u"with open(\"f\") as f:", "calls open; f"},
        Case{u"return await asyncio.sleep(1)", "calls asyncio.sleep"},
        Case{u"std::vector<int>::push_back(3)", "calls std.vector.push_back"},
        Case{u"std::map<std::string, int>::at", "std.map.at"},
        Case{u"from json import loads, dumps as d", "calls json.loads json.dumps"},
        Case{u"import numpy as np", "numpy"}, Case{u"import csv file", "import csv file"},
        Case{u"x = read_csv", "read_csv"}, Case{u"a == b", "a b"},
        Case{u"requests.exceptions.HTTPError: 404 not found", "requests.exceptions.HTTPError"},
        Case{u"File \"/lib/socket.py\", line 8, in create", "calls socket.create"},
        Case{u"Table(rows).sort(key).head", "calls (sort).head (Table).sort Table"},
        Case{u"Traceback (most recent call last):\n  File \"a.py\", line 1, in <module>\n"
             u"json.JSONDecodeError: Expecting",
             "json.JSONDecodeError"},
        Case{u"how does groupby() work", "calls groupby; how does work"},
        Case{u"f(g(h(\"unclosed", "calls f g h"}, Case{u"x=read_csv", "read_csv"},
        Case{u"x=f(y)", "calls f"}, Case{u"x=', '.join(y)", "calls str.join"}, Case{u"a!=b", "a b"},
        Case{u"a<=b", "a b"}, Case{u"a==b", "a b"}, Case{u"f(a=b)", "calls f"},
        Case{u"cls.make(x)", "calls make"}, Case{u"this.size()", "calls size"},
        Case{u"$x.get(y)", "calls $x.get"},
        Case{u"std::make_unique<int>(3)", "calls std.make_unique"},
        Case{u"std::map<int, std::vector<int>>::at", "std.map.at"}, Case{u"a<f(x)>::y", "calls f"},
        Case{u"f('it\\'s', g(x))", "calls f g"}, Case{u"for os.path in f(x):", "calls f; os.path"},
        Case{u"from json import loads", "calls json.loads"}, Case{u"import numpy", "numpy"}));

INSTANTIATE_TEST_SUITE_P(
    Tracebacks, QuestionTest,
    ::testing::Values(Case{u"File \"a.py\", line 8, in create (deep)", "calls a.create"},
                      Case{u"File \"C:\\lib\\a.b.py\", line 8, in create", "calls a.create"},
                      Case{u"File \"/lib/.hidden\", line 2, in load", "calls load"},
                      Case{u"File \"a.py\", line 1, in <module>",
                           "File line 1 in module; phrase a.py"},
                      Case{u"File \"a.py\", line 3", "File line 3; phrase a.py"}));

TEST(QuestionErrorTest, PointsAtWhatIsWrong) {
    struct Wrong {
        const char16_t* question;
        std::size_t position;
        std::size_t length;
        const char* message;
    };
    const Wrong cases[] = {
        {u"", 0, 0, "nothing to look for"},
        {u" ? ", 1, 1, "nothing to look for"},
        {u"type:method", 0, 11, "has filters, but nothing"},
        {u"product:scipy", 0, 13, "has filters, but nothing"},
        {u"is:current", 0, 10, "has filters, but nothing"},
        {u"-x", 0, 2, "has filters, but nothing"},
        {u"x product:", 2, 8, "\"product:scipy\" has one"},
        {u"x in:", 2, 3, "in:name, in:purpose, in:text"},
        {u"x is:,", 2, 4, "is:deprecated, is:current"},
        {u"x type:", 2, 5, "\"type:\" has no value"},
        {u"x type:metod", 7, 5, "there is: function"},
        {u"  x in:title", 7, 5, "in:name, in:purpose, in:text"},
        {u"x is:new", 5, 3, "is:deprecated, is:current"},
        {u"x \"half a phrase", 2, 14, "not ended"},
        {u"x product:\"half", 10, 5, "not ended"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(fl::i18n::toUtf8(c.question));
        try {
            static_cast<void>(Question::parse(c.question));
            ADD_FAILURE() << "is taken for a question";
        } catch (const QuestionError& error) {
            EXPECT_EQ(error.position(), c.position);
            EXPECT_EQ(error.length(), c.length);
            EXPECT_THAT(error.what(), HasSubstr(c.message));
        }
    }
}

TEST(QuestionErrorTest, QuotesNoControlCharacters) {
    const std::u16string question{u"x type:a\0b\u001Bc", 12};
    try {
        static_cast<void>(Question::parse(question));
        FAIL() << "is taken for a question";
    } catch (const QuestionError& error) {
        EXPECT_THAT(error.what(), HasSubstr("\"a b c\" is no value"));
    }
}

TEST(QuestionErrorTest, WhatNobodyTypesIsRefused) {
    EXPECT_THROW(static_cast<void>(Question::parse(std::u16string(1'000'000, u'a'))),
                 QuestionError);
    std::u16string words;
    for (int word = 0; word < 1000; ++word)
        words += u"w ";
    EXPECT_THROW(static_cast<void>(Question::parse(words)), QuestionError);
    std::u16string name = u"w";
    std::u16string phrases;
    for (std::size_t word = 1; word < Question::maxTerms; ++word) {
        name += u".w";
        phrases += u"\"w w\" ";
    }
    EXPECT_NO_THROW(static_cast<void>(Question::parse(name)));
    EXPECT_THROW(static_cast<void>(Question::parse(name + u".w")), QuestionError);
    EXPECT_NO_THROW(static_cast<void>(Question::parse(name + u"()")));
    EXPECT_THROW(static_cast<void>(Question::parse(name + u".w()")), QuestionError);
    EXPECT_NO_THROW(static_cast<void>(Question::parse(phrases + u"w")));
    EXPECT_THROW(static_cast<void>(Question::parse(phrases + u"\"w\" w")), QuestionError);
    const std::u16string brackets(4000, u'(');
    EXPECT_EQ(dump(Question::parse(u"f" + brackets)), "calls f");
}

TEST(RungTest, EachHasANameAndADescription) {
    std::set<std::string_view> names;
    std::set<std::string_view> descriptions;
    for (std::uint8_t number = 0; number <= static_cast<std::uint8_t>(ask::Rung::MostWords);
         ++number) {
        names.insert(toString(static_cast<ask::Rung>(number)));
        descriptions.insert(describe(static_cast<ask::Rung>(number)));
    }
    EXPECT_EQ(names.size(), 10U);
    EXPECT_EQ(descriptions.size(), 10U);
    EXPECT_EQ(toString(ask::Rung::Name), "name");
    EXPECT_EQ(toString(ask::Rung::WithoutPackage), "without-package");
    EXPECT_EQ(toString(ask::Rung::MostWords), "most-words");
}

TEST(QuestionTermTest, KnowsItsPlaceInWhatWasTyped) {
    const auto question = Question::parse(u"  read os.path, x");
    ASSERT_EQ(question.terms().size(), 3U);
    EXPECT_EQ(question.text(), u"read os.path, x");
    EXPECT_EQ(question.terms()[1].position, 7U);
    EXPECT_EQ(question.terms()[1].length, 7U);
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
