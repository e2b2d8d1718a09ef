#include "sphinx/MathSymbols.hpp"

#include <algorithm>
#include <array>
#include <span>

#include "sphinx/Text.hpp"

namespace reference::importers::sphinx {
namespace {

// In the order of their bytes.
constexpr std::array symbols = std::to_array<MathSymbol>({
    {" ", " ", MathSpacing::None},
    {"!", "", MathSpacing::None},
    {"#", "#", MathSpacing::None},
    {"$", "$", MathSpacing::None},
    {"%", "%", MathSpacing::None},
    {"&", "&", MathSpacing::None},
    {",", " ", MathSpacing::None},
    {":", " ", MathSpacing::None},
    {";", " ", MathSpacing::None},
    {">", " ", MathSpacing::None},
    {"Delta", "Δ", MathSpacing::None},
    {"Gamma", "Γ", MathSpacing::None},
    {"Im", "ℑ", MathSpacing::None},
    {"Lambda", "Λ", MathSpacing::None},
    {"Leftarrow", "⇐", MathSpacing::Around},
    {"Leftrightarrow", "⇔", MathSpacing::Around},
    {"Omega", "Ω", MathSpacing::None},
    {"Phi", "Φ", MathSpacing::None},
    {"Pi", "Π", MathSpacing::None},
    {"Pr", "Pr", MathSpacing::Word},
    {"Psi", "Ψ", MathSpacing::None},
    {"Re", "ℜ", MathSpacing::None},
    {"Rightarrow", "⇒", MathSpacing::Around},
    {"S", "§", MathSpacing::None},
    {"Sigma", "Σ", MathSpacing::None},
    {"Theta", "Θ", MathSpacing::None},
    {"Upsilon", "Υ", MathSpacing::None},
    {"Vert", "‖", MathSpacing::None},
    {"Xi", "Ξ", MathSpacing::None},
    {"_", "_", MathSpacing::None},
    {"aleph", "ℵ", MathSpacing::None},
    {"alpha", "α", MathSpacing::None},
    {"angle", "∠", MathSpacing::None},
    {"approx", "≈", MathSpacing::Around},
    {"arccos", "arccos", MathSpacing::Word},
    {"arcsin", "arcsin", MathSpacing::Word},
    {"arctan", "arctan", MathSpacing::Word},
    {"arg", "arg", MathSpacing::Word},
    {"ast", "*", MathSpacing::Around},
    {"backslash", "\\", MathSpacing::None},
    {"because", "∵", MathSpacing::None},
    {"beta", "β", MathSpacing::None},
    {"bf", "", MathSpacing::None},
    {"bigcap", "⋂", MathSpacing::Word},
    {"bigcup", "⋃", MathSpacing::Word},
    {"bigoplus", "⨁", MathSpacing::Word},
    {"bigotimes", "⨂", MathSpacing::Word},
    {"bmod", "mod", MathSpacing::Around},
    {"bot", "⊥", MathSpacing::None},
    {"bullet", "•", MathSpacing::Around},
    {"cal", "", MathSpacing::None},
    {"cap", "∩", MathSpacing::Around},
    {"cdot", "·", MathSpacing::Around},
    {"cdots", "⋯", MathSpacing::None},
    {"checkmark", "✓", MathSpacing::None},
    {"chi", "χ", MathSpacing::None},
    {"circ", "∘", MathSpacing::Around},
    {"colon", ":", MathSpacing::Around},
    {"cong", "≅", MathSpacing::Around},
    {"cos", "cos", MathSpacing::Word},
    {"cosh", "cosh", MathSpacing::Word},
    {"cot", "cot", MathSpacing::Word},
    {"coth", "coth", MathSpacing::Word},
    {"csc", "csc", MathSpacing::Word},
    {"cup", "∪", MathSpacing::Around},
    {"dagger", "†", MathSpacing::None},
    {"ddagger", "‡", MathSpacing::None},
    {"ddots", "⋱", MathSpacing::None},
    {"deg", "deg", MathSpacing::Word},
    {"degree", "°", MathSpacing::None},
    {"delta", "δ", MathSpacing::None},
    {"det", "det", MathSpacing::Word},
    {"dim", "dim", MathSpacing::Word},
    {"displaystyle", "", MathSpacing::None},
    {"div", "÷", MathSpacing::Around},
    {"doteq", "≐", MathSpacing::Around},
    {"dots", "…", MathSpacing::None},
    {"dotsb", "⋯", MathSpacing::None},
    {"dotsc", "…", MathSpacing::None},
    {"downarrow", "↓", MathSpacing::Around},
    {"ell", "ℓ", MathSpacing::None},
    {"emptyset", "∅", MathSpacing::None},
    {"epsilon", "ϵ", MathSpacing::None},
    {"equiv", "≡", MathSpacing::Around},
    {"eta", "η", MathSpacing::None},
    {"exists", "∃", MathSpacing::None},
    {"exp", "exp", MathSpacing::Word},
    {"forall", "∀", MathSpacing::None},
    {"gamma", "γ", MathSpacing::None},
    {"gcd", "gcd", MathSpacing::Word},
    {"ge", "≥", MathSpacing::Around},
    {"geq", "≥", MathSpacing::Around},
    {"geqslant", "≥", MathSpacing::Around},
    {"gets", "←", MathSpacing::Around},
    {"gg", "≫", MathSpacing::Around},
    {"hbar", "ℏ", MathSpacing::None},
    {"hom", "hom", MathSpacing::Word},
    {"iff", "⇔", MathSpacing::Around},
    {"iiint", "∭", MathSpacing::Word},
    {"iint", "∬", MathSpacing::Word},
    {"imath", "ı", MathSpacing::None},
    {"implies", "⇒", MathSpacing::Around},
    {"in", "∈", MathSpacing::Around},
    {"inf", "inf", MathSpacing::Word},
    {"infty", "∞", MathSpacing::None},
    {"int", "∫", MathSpacing::Word},
    {"iota", "ι", MathSpacing::None},
    {"it", "", MathSpacing::None},
    {"jmath", "ȷ", MathSpacing::None},
    {"kappa", "κ", MathSpacing::None},
    {"ker", "ker", MathSpacing::Word},
    {"lVert", "‖", MathSpacing::None},
    {"lambda", "λ", MathSpacing::None},
    {"land", "∧", MathSpacing::Around},
    {"langle", "⟨", MathSpacing::None},
    {"lbrace", "{", MathSpacing::None},
    {"lbrack", "[", MathSpacing::None},
    {"lceil", "⌈", MathSpacing::None},
    {"ldots", "…", MathSpacing::None},
    {"le", "≤", MathSpacing::Around},
    {"leftarrow", "←", MathSpacing::Around},
    {"leftrightarrow", "↔", MathSpacing::Around},
    {"leq", "≤", MathSpacing::Around},
    {"leqslant", "≤", MathSpacing::Around},
    {"lfloor", "⌊", MathSpacing::None},
    {"lg", "lg", MathSpacing::Word},
    {"lim", "lim", MathSpacing::Word},
    {"liminf", "lim inf", MathSpacing::Word},
    {"limits", "", MathSpacing::None},
    {"limsup", "lim sup", MathSpacing::Word},
    {"ll", "≪", MathSpacing::Around},
    {"ln", "ln", MathSpacing::Word},
    {"lnot", "¬", MathSpacing::None},
    {"log", "log", MathSpacing::Word},
    {"longleftarrow", "⟵", MathSpacing::Around},
    {"longrightarrow", "⟶", MathSpacing::Around},
    {"lor", "∨", MathSpacing::Around},
    {"lvert", "|", MathSpacing::None},
    {"mapsto", "↦", MathSpacing::Around},
    {"max", "max", MathSpacing::Word},
    {"mid", "|", MathSpacing::Around},
    {"min", "min", MathSpacing::Word},
    {"mod", "mod", MathSpacing::Around},
    {"models", "⊨", MathSpacing::Around},
    {"mp", "∓", MathSpacing::Around},
    {"mu", "μ", MathSpacing::None},
    {"nabla", "∇", MathSpacing::None},
    {"ne", "≠", MathSpacing::Around},
    {"neg", "¬", MathSpacing::None},
    {"neq", "≠", MathSpacing::Around},
    {"ni", "∋", MathSpacing::Around},
    {"nolimits", "", MathSpacing::None},
    {"nonumber", "", MathSpacing::None},
    {"notag", "", MathSpacing::None},
    {"notin", "∉", MathSpacing::Around},
    {"nu", "ν", MathSpacing::None},
    {"odot", "⊙", MathSpacing::Around},
    {"oint", "∮", MathSpacing::Word},
    {"omega", "ω", MathSpacing::None},
    {"omicron", "ο", MathSpacing::None},
    {"oplus", "⊕", MathSpacing::Around},
    {"otimes", "⊗", MathSpacing::Around},
    {"parallel", "∥", MathSpacing::Around},
    {"partial", "∂", MathSpacing::None},
    {"perp", "⊥", MathSpacing::Around},
    {"phi", "φ", MathSpacing::None},
    {"pi", "π", MathSpacing::None},
    {"pm", "±", MathSpacing::Around},
    {"prec", "≺", MathSpacing::Around},
    {"prime", "′", MathSpacing::None},
    {"prod", "∏", MathSpacing::Word},
    {"propto", "∝", MathSpacing::Around},
    {"psi", "ψ", MathSpacing::None},
    {"qquad", " ", MathSpacing::None},
    {"quad", " ", MathSpacing::None},
    {"rVert", "‖", MathSpacing::None},
    {"rangle", "⟩", MathSpacing::None},
    {"rbrace", "}", MathSpacing::None},
    {"rbrack", "]", MathSpacing::None},
    {"rceil", "⌉", MathSpacing::None},
    {"rfloor", "⌋", MathSpacing::None},
    {"rho", "ρ", MathSpacing::None},
    {"rightarrow", "→", MathSpacing::Around},
    {"rm", "", MathSpacing::None},
    {"rvert", "|", MathSpacing::None},
    {"scriptstyle", "", MathSpacing::None},
    {"sec", "sec", MathSpacing::Word},
    {"setminus", "∖", MathSpacing::Around},
    {"sigma", "σ", MathSpacing::None},
    {"sim", "∼", MathSpacing::Around},
    {"simeq", "≃", MathSpacing::Around},
    {"sin", "sin", MathSpacing::Word},
    {"sinh", "sinh", MathSpacing::Word},
    {"square", "□", MathSpacing::None},
    {"star", "⋆", MathSpacing::Around},
    {"subset", "⊂", MathSpacing::Around},
    {"subseteq", "⊆", MathSpacing::Around},
    {"succ", "≻", MathSpacing::Around},
    {"sum", "∑", MathSpacing::Word},
    {"sup", "sup", MathSpacing::Word},
    {"supset", "⊃", MathSpacing::Around},
    {"supseteq", "⊇", MathSpacing::Around},
    {"tan", "tan", MathSpacing::Word},
    {"tanh", "tanh", MathSpacing::Word},
    {"tau", "τ", MathSpacing::None},
    {"textstyle", "", MathSpacing::None},
    {"therefore", "∴", MathSpacing::None},
    {"theta", "θ", MathSpacing::None},
    {"times", "×", MathSpacing::Around},
    {"to", "→", MathSpacing::Around},
    {"top", "⊤", MathSpacing::None},
    {"triangle", "△", MathSpacing::None},
    {"triangleq", "≜", MathSpacing::Around},
    {"uparrow", "↑", MathSpacing::Around},
    {"upsilon", "υ", MathSpacing::None},
    {"varepsilon", "ε", MathSpacing::None},
    {"varnothing", "∅", MathSpacing::None},
    {"varphi", "φ", MathSpacing::None},
    {"varpi", "ϖ", MathSpacing::None},
    {"varrho", "ϱ", MathSpacing::None},
    {"varsigma", "ς", MathSpacing::None},
    {"vartheta", "ϑ", MathSpacing::None},
    {"vdash", "⊢", MathSpacing::Around},
    {"vdots", "⋮", MathSpacing::None},
    {"vee", "∨", MathSpacing::Around},
    {"vert", "|", MathSpacing::None},
    {"wedge", "∧", MathSpacing::Around},
    {"wp", "℘", MathSpacing::None},
    {"xi", "ξ", MathSpacing::None},
    {"zeta", "ζ", MathSpacing::None},
    {"{", "{", MathSpacing::None},
    {"|", "‖", MathSpacing::None},
    {"}", "}", MathSpacing::None},
});

struct WrittenForm {
    std::string_view text;
    std::string_view form;
};

constexpr std::array superscripts = std::to_array<WrittenForm>({
    {"0", "⁰"}, {"1", "¹"}, {"2", "²"}, {"3", "³"}, {"4", "⁴"}, {"5", "⁵"}, {"6", "⁶"}, {"7", "⁷"},
    {"8", "⁸"}, {"9", "⁹"}, {"+", "⁺"}, {"-", "⁻"}, {"=", "⁼"}, {"(", "⁽"}, {")", "⁾"}, {"a", "ᵃ"},
    {"b", "ᵇ"}, {"c", "ᶜ"}, {"d", "ᵈ"}, {"e", "ᵉ"}, {"f", "ᶠ"}, {"g", "ᵍ"}, {"h", "ʰ"}, {"i", "ⁱ"},
    {"j", "ʲ"}, {"k", "ᵏ"}, {"l", "ˡ"}, {"m", "ᵐ"}, {"n", "ⁿ"}, {"o", "ᵒ"}, {"p", "ᵖ"}, {"r", "ʳ"},
    {"s", "ˢ"}, {"t", "ᵗ"}, {"u", "ᵘ"}, {"v", "ᵛ"}, {"w", "ʷ"}, {"x", "ˣ"}, {"y", "ʸ"}, {"z", "ᶻ"},
    {"A", "ᴬ"}, {"B", "ᴮ"}, {"D", "ᴰ"}, {"E", "ᴱ"}, {"G", "ᴳ"}, {"H", "ᴴ"}, {"I", "ᴵ"}, {"J", "ᴶ"},
    {"K", "ᴷ"}, {"L", "ᴸ"}, {"M", "ᴹ"}, {"N", "ᴺ"}, {"O", "ᴼ"}, {"P", "ᴾ"}, {"R", "ᴿ"}, {"T", "ᵀ"},
    {"U", "ᵁ"}, {"V", "ⱽ"}, {"W", "ᵂ"}, {"β", "ᵝ"}, {"γ", "ᵞ"}, {"δ", "ᵟ"}, {"θ", "ᶿ"}, {"φ", "ᵠ"},
    {"χ", "ᵡ"}, {"′", "′"}, {"∘", "°"}, {"°", "°"},
});

constexpr std::array subscripts = std::to_array<WrittenForm>({
    {"0", "₀"}, {"1", "₁"}, {"2", "₂"}, {"3", "₃"}, {"4", "₄"}, {"5", "₅"}, {"6", "₆"}, {"7", "₇"},
    {"8", "₈"}, {"9", "₉"}, {"+", "₊"}, {"-", "₋"}, {"=", "₌"}, {"(", "₍"}, {")", "₎"}, {"a", "ₐ"},
    {"e", "ₑ"}, {"h", "ₕ"}, {"i", "ᵢ"}, {"j", "ⱼ"}, {"k", "ₖ"}, {"l", "ₗ"}, {"m", "ₘ"}, {"n", "ₙ"},
    {"o", "ₒ"}, {"p", "ₚ"}, {"r", "ᵣ"}, {"s", "ₛ"}, {"t", "ₜ"}, {"u", "ᵤ"}, {"v", "ᵥ"}, {"x", "ₓ"},
    {"β", "ᵦ"}, {"γ", "ᵧ"}, {"ρ", "ᵨ"}, {"φ", "ᵩ"}, {"χ", "ᵪ"},
});

constexpr std::array doubleStruckLetters = std::to_array<WrittenForm>({
    {"A", "𝔸"},
    {"B", "𝔹"},
    {"C", "ℂ"},
    {"D", "𝔻"},
    {"E", "𝔼"},
    {"F", "𝔽"},
    {"H", "ℍ"},
    {"N", "ℕ"},
    {"P", "ℙ"},
    {"Q", "ℚ"},
    {"R", "ℝ"},
    {"T", "𝕋"},
    {"Z", "ℤ"},
    {"1", "𝟙"},
});

constexpr std::array accents = std::to_array<WrittenForm>({
    {"hat", "\u0302"},
    {"widehat", "\u0302"},
    {"tilde", "\u0303"},
    {"widetilde", "\u0303"},
    {"bar", "\u0304"},
    {"overline", "\u0305"},
    {"dot", "\u0307"},
    {"ddot", "\u0308"},
    {"vec", "\u20D7"},
    {"check", "\u030C"},
    {"breve", "\u0306"},
    {"acute", "\u0301"},
    {"grave", "\u0300"},
    {"mathring", "\u030A"},
    {"underline", "\u0332"},
});

std::string_view formOf(std::span<const WrittenForm> forms, std::string_view text) {
    const auto found = std::ranges::find(forms, text, &WrittenForm::text);
    return found != forms.end() ? found->form : std::string_view();
}

std::optional<std::string> inForm(std::span<const WrittenForm> forms, std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const std::string_view character = firstCharacter(text);
        text.remove_prefix(character.size());
        if (character == " ")
            continue;
        const std::string_view form = formOf(forms, character);
        if (form.empty())
            return std::nullopt;
        result += form;
    }
    return result;
}

}  // namespace

const MathSymbol* findSymbol(std::string_view command) {
    const auto* const found = std::ranges::lower_bound(symbols, command, {}, &MathSymbol::command);
    return found != symbols.end() && found->command == command ? found : nullptr;
}

std::string_view combiningAccent(std::string_view command) {
    return formOf(accents, command);
}

std::optional<std::string> superscript(std::string_view text) {
    return inForm(superscripts, text);
}

std::optional<std::string> subscript(std::string_view text) {
    return inForm(subscripts, text);
}

std::string_view doubleStruck(std::string_view text) {
    const std::string_view form = formOf(doubleStruckLetters, text);
    return form.empty() ? text : form;
}

}  // namespace reference::importers::sphinx
