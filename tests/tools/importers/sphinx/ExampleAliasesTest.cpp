// What the importer learns from the code of pages about the names of modules and classes.
#include <map>
#include <string>

#include <gmock/gmock.h>

#include "BuiltTree.hpp"
#include "fl/i18n/utf.hpp"
#include "sphinx/CodeNames.hpp"
#include "sphinx/ExampleAliases.hpp"

namespace reference::importers::sphinx {
namespace VELTRA_TEST_FILE {

using tests::BuiltTree;
using tests::described;

// "alias=name*count" of each, with spaces between them.
std::string dump(const CodeNames::ByName& names) {
    std::string text;
    for (const auto& [name, others] : names)
        for (const auto& [other, count] : others)
            text += (text.empty() ? "" : " ") + name + "=" + other + "*" + std::to_string(count);
    return text;
}

std::string importsIn(const std::string& code) {
    CodeNames names;
    addCodeNames(code, names);
    return dump(names.imports);
}

std::string assignmentsIn(const std::string& code) {
    CodeNames names;
    addCodeNames(code, names);
    return dump(names.assignments);
}

std::string dump(const docimage::Aliases& aliases) {
    CodeNames::ByName names;
    for (const auto& [alias, counts] : aliases)
        for (const auto& [name, count] : counts)
            names[fl::i18n::toUtf8(alias)][fl::i18n::toUtf8(name)] = count;
    return dump(names);
}

TEST(ExampleAliasesTest, ImportsAreReadAsTheLanguageHasThem) {
    const struct {
        const char* code;
        const char* imports;
    } rows[] = {
        {"import numpy as np", "np=numpy*1"},
        {">>> import numpy as np, pandas as pd", "np=numpy*1 pd=pandas*1"},
        {"import os, numpy as np  # numbers", "np=numpy*1"},
        {"import numpy as np; import pandas as pd", "np=numpy*1 pd=pandas*1"},
        {"import matplotlib.pyplot as plt\nimport matplotlib.pyplot as plt",
         "plt=matplotlib.pyplot*2"},
        {"from matplotlib import pyplot as plt", "plt=matplotlib.pyplot*1"},
        {"from a.b import c, d as e, f as g", "e=a.b.d*1 g=a.b.f*1"},
        {">>> from a import (\n...     b as c,\n...     d as e,\n... )\n", "c=a.b*1 e=a.d*1"},
        {"In [12]: import pandas as pd\n   ....: x", "pd=pandas*1"},
        {"    import numpy as np", "np=numpy*1"},
        {"import numpy \\\n    as np", "np=numpy*1"},
        // No alias.
        {"import numpy", ""},
        {"import scipy.stats as stats", ""},
        {"from a import b as b", ""},
        // No import.
        {"import numpy as np to begin with", ""},
        {"import numpy as usual, and go on", ""},
        {"x = \"\"\"\nimport numpy as np\n\"\"\"", ""},
        {"f('import numpy as np')", ""},
        {"# import numpy as np", ""},
        {"f(\n    import numpy as np)", ""},
        {"from . import a as b", ""},
        {"from .a import b as c", ""},
        {"import * as d from 'd'", ""},
        {"important numpy as np", ""},
        {"import größe as g", ""},
        {"import a.b. as c", ""},
        {"import", ""},
        {"from a import", ""},
        {"from a import b as", ""},
        // What is not closed ends with the next prompt.
        {">>> f(1\n>>> import numpy as np", "np=numpy*1"},
        {"It isn't so:\nimport numpy as np", "np=numpy*1"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(importsIn(row.code), row.imports) << row.code;
}

TEST(ExampleAliasesTest, AssignmentsAreReadAsTheLanguageHasThem) {
    const struct {
        const char* code;
        const char* assignments;
    } rows[] = {
        {">>> df = pd.DataFrame({'a': 1},\n...     index=pd.Index([1]))", "df=pd.DataFrame*1"},
        {"df = df.dropna()\ndf = df", ""},
        {"df = 1\ndf = pd.x", "df=*2"},
        {"df == pd.DataFrame()", ""},
        {"a, b = pd.f()", ""},
        {"a.b = pd.f()", ""},
        {"a[0] = pd.f()", ""},
        {"f(a=pd.g())", ""},
        {"f(\na=pd.g())", ""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(assignmentsIn(row.code), row.assignments) << row.code;
}

// A page with a class m.Box and the given code.
void addPage(const std::string& code, BuiltTree& tree) {
    tree.object("m.Box", "py:class", "api.html#m.Box");
    tree.object("m.make", "py:function", "api.html#m.make");
    tree.page("api.html", described("py", "class", "m.Box", "Box", "<p>A box.</p>") +
                              described("py", "function", "m.make", "make",
                                        "<p>Makes.</p><div class=\"highlight-python3\"><pre>" +
                                            code + "</pre></div>"));
}

std::string aliasesOf(const std::string& code) {
    BuiltTree tree;
    addPage(code, tree);
    return dump(tree.import().documentation.aliases);
}

std::string repeated(const std::string& text, int count) {
    std::string all;
    for (; count > 0; --count)
        all += text;
    return all;
}

TEST(ExampleAliasesTest, AreLearntFromEachBlockOfCode) {
    BuiltTree tree;
    addPage("import m as box", tree);
    tree.object("m.open", "py:function", "open.html#m.open");
    tree.page("open.html",
              "<div class=\"doctest\"><pre><span></span><span class=\"gp\">&gt;&gt;&gt; </span>"
              "<span class=\"kn\">import</span> <span class=\"nn\">m</span> as box\n</pre></div>" +
                  described("py", "function", "m.open", "open",
                            "<p>Opens.</p><pre>from other.parts import lid as l</pre>") +
                  "<table><tr><td class=\"linenos\"><div class=\"linenodiv\"><pre>import no as "
                  "never</pre></div></td></tr></table>"
                  "<p>import m as prose</p>");
    EXPECT_EQ(dump(tree.import().documentation.aliases), "box=m*2 l=other.parts.lid*1");
}

TEST(ExampleAliasesTest, AVariableStandsForTheClassThatItMostlyIsOf) {
    const std::string box = "import m as b\n" + repeated("x = b.Box(1)\n", 10);
    EXPECT_EQ(aliasesOf(box), "b=m*1 x=m.Box*10");
    EXPECT_EQ(aliasesOf(box + repeated("x = 1\n", 2)), "b=m*1 x=m.Box*10");
    EXPECT_EQ(aliasesOf(box + repeated("x = 1\n", 3)), "b=m*1");
    EXPECT_EQ(aliasesOf("import m as b\n" + repeated("x = b.Box(1)\n", 9)), "b=m*1");
    EXPECT_EQ(aliasesOf("import m as b\n" + repeated("x = b.make()\n", 20)), "b=m*1");
    EXPECT_EQ(aliasesOf(repeated("x = b.Box(1)\n", 20)), "");
    // What is imported under the name goes before.
    EXPECT_EQ(aliasesOf("import m as b\nimport y.z as x\n" + repeated("x = b.Box()\n", 20)),
              "b=m*1 x=y.z*1");
}

TEST(ExampleAliasesTest, NoMoreAreKeptThanASetTakes) {
    std::string code = "import rare as a\n";
    for (int number = 0; number < 205; ++number)
        code +=
            repeated("import m" + std::to_string(number) + " as n" + std::to_string(number) + "\n",
                     number == 204 ? 1 : 2);
    for (int number = 0; number < 9; ++number)
        code += repeated("import x" + std::to_string(number) + " as n0\n", number + 3);
    BuiltTree tree;
    addPage(code, tree);
    const auto aliases = tree.import().documentation.aliases;
    EXPECT_EQ(aliases.size(), 200U);
    EXPECT_FALSE(aliases.contains(u"a"));
    EXPECT_FALSE(aliases.contains(u"n204"));
    ASSERT_EQ(aliases.at(u"n0").size(), 8U);
    EXPECT_EQ(aliases.at(u"n0").at(u"x8"), 11U);
    EXPECT_FALSE(aliases.at(u"n0").contains(u"m0"));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::importers::sphinx
