#include <string>

#include <gtest/gtest.h>

#include "sphinx/MathText.hpp"

namespace reference::importers::sphinx {
namespace VELTRA_TEST_FILE {

TEST(MathTextTest, TurnsTexIntoText) {
    const struct {
        const char* tex;
        const char* text;
    } rows[] = {
        {"", ""},
        {"x + 1", "x + 1"},
        {"\\alpha\\beta", "αβ"},
        {"x^2", "x²"},
        {"x_i^{n+1}", "xᵢⁿ⁺¹"},
        {"x_{ij}", "xᵢⱼ"},
        {"x_b", "x_b"},
        {"x_{max, q}", "x_{max, q}"},
        {"e^{-x}", "e⁻ˣ"},
        {"A^T", "Aᵀ"},
        {"x^*", "x^*"},
        {"f'(x)", "f′(x)"},
        {"90^\\circ", "90°"},
        {"a \\leq b", "a ≤ b"},
        {"a\\leq b", "a ≤ b"},
        {"a\\cdot b", "a · b"},
        {"\\frac{1}{2}", "1/2"},
        {"\\frac12", "1/2"},
        {"\\frac{x^2}{2\\sigma}", "x²/(2σ)"},
        {"\\frac{a + b}{c}", "(a + b)/c"},
        {"\\frac{(a + b)}{(c + d)}", "(a + b)/(c + d)"},
        {"\\frac{(a)(b)+1}{10}", "((a)(b)+1)/10"},
        {"\\frac{1}{2}x", "1/2 x"},
        {"x\\frac{1}{2}", "x 1/2"},
        {"\\frac{1}{\\frac{a}{b}}", "1/(a/b)"},
        {"\\sqrt{x}", "√x"},
        {"\\sqrt{x+1}", "√(x+1)"},
        {"\\sqrt[3]{x}", "³√x"},
        {"\\sum_{i=1}^{n}x_i", "∑ᵢ₌₁ⁿ xᵢ"},
        {"2\\sin\\theta", "2 sin θ"},
        {"\\log(x)", "log(x)"},
        {"\\hat{x} + \\bar y", "x\u0302 + y\u0304"},
        {"\\mathbf{A} \\in \\mathbb{R}^n", "A ∈ ℝⁿ"},
        {"\\operatorname{sinc}x", "sinc x"},
        {"\\text{if } x > 0", "if x > 0"},
        {"\\left( \\frac{a}{b} \\right)", "(a/b)"},
        {"\\left. x \\right|_{0}", "x |₀"},
        {"\\{ x \\mid y \\}", "{ x | y }"},
        {"\\binom{n}{k}", "(n choose k)"},
        {"{n \\choose 2} + 1", "(n choose 2) + 1"},
        {"{a + 1 \\over b}", "(a + 1)/b"},
        {"a\\\n b", "a b"},
        {"a \\not= b", "a =\u0338 b"},
        {"\\underset{x}{\\min} f", "minₓ f"},
        {"\\begin{pmatrix} a & b \\\\ c & d \\end{pmatrix}", "(a, b; c, d)"},
        {"\\begin{array}{cc} a & b \\end{array}", "a, b"},
        {"\\begin{cases} 0 & x < 0 \\\\ 1 & x \\geq 0 \\end{cases}", "{ 0 x < 0; 1 x ≥ 0"},
        {"\\begin{split}a &= b \\\\ c &= d\\end{split}", "a = b\nc = d"},
        {"a &= b \\\\ &= c", "a = b\n= c"},
        {"1000\\,\\mathrm{m}", "1000 m"},
        {"\\{\\,\\}", "{ }"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(mathText(row.tex), row.text) << row.tex;
}

TEST(MathTextTest, LeavesWhatHasNoSuchFormAsItIs) {
    const char* const rows[] = {
        "\\unknown{x} + \\alpha",
        "\\frac{a}",
        "{a",
        "a}",
        "\\hat{xy}",
        "\\begin{split} a",
        "\\end{split}",
        "\\",
        "x^",
        "\\sqrt[n",
        "a $b$",
        "\\text{a \\b}",
        "\\begin{foo",
        "\\overbrace{a + b}",
    };
    for (const char* const tex : rows)
        EXPECT_EQ(mathText(tex), tex);
    EXPECT_EQ(mathText("  a   \\foo  "), "a \\foo");
}

TEST(MathTextTest, IsNotCaughtByDepth) {
    std::string deep;
    for (int level = 0; level < 100000; ++level)
        deep += "{";
    EXPECT_EQ(mathText(deep), deep);
    std::string accents;
    for (int level = 0; level < 100000; ++level)
        accents += "\\hat";
    EXPECT_EQ(mathText(accents + " x"), accents + " x");
    std::string infixes = "a";
    for (int level = 0; level < 100000; ++level)
        infixes += "\\over a";
    EXPECT_EQ(mathText(infixes), infixes);
    std::string scripts = "x";
    for (int level = 0; level < 100000; ++level)
        scripts += "^{a";
    EXPECT_EQ(mathText(scripts), scripts);
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::importers::sphinx
