#include "vref/CompleteLine.hpp"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <map>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "docparser/DocResourceParser.hpp"
#include "fl/i18n/utf.hpp"
#include "property/RefEntityType.hpp"
#include "reference/api/cache_manager/ReferenceCacheManager.hpp"
#include "reference/ask/Question.hpp"
#include "reference/ask/complete.hpp"
#include "vref/CommandLineText.hpp"
#include "vref/Configuration.hpp"
#include "vref/DisplayText.hpp"
#include "vref/Documentation.hpp"
#include "vref/Ordering.hpp"

namespace reference::tools {
namespace {

using cache_manager::ReferenceCacheManager;
using fl::i18n::toUtf8;
using property::RefEntityType;

constexpr std::string_view wordsOption = "--words";
constexpr std::string_view quotedOption = "--quoted";
constexpr std::size_t mostNames = 50;

struct Candidate {
    std::string text;
    std::string description;
};

// A word as a shell takes it: without backslashes and quotation marks, of which the last may be
// open. What would be expanded stays as it is.
std::string unquoted(std::string_view typed) {
    std::string word;
    char quote = 0;
    for (std::size_t at = 0; at < typed.size(); ++at) {
        const char c = typed[at];
        if (c == '\\' && quote != '\'' && at + 1 < typed.size())
            word += typed[++at];
        else if (quote == 0 && (c == '"' || c == '\''))
            quote = c;
        else if (quote != 0 && c == quote)
            quote = 0;
        else
            word += c;
    }
    return word;
}

std::string withHome(const std::string& folder) {
    const char* const home = std::getenv("HOME");
    return folder.starts_with("~/") && home != nullptr ? home + folder.substr(1) : folder;
}

const CLI::App* commandNamed(const CLI::App& app, const std::string& name) {
    const auto commands = app.get_subcommands({});
    const auto found = std::ranges::find_if(
        commands, [&](const CLI::App* command) { return command->check_name(name); });
    return found == commands.end() ? nullptr : *found;
}

std::vector<std::string> typedNames(const CLI::Option& option) {
    std::vector<std::string> names;
    for (const auto& name : option.get_lnames())
        names.push_back("--" + name);
    for (const auto& name : option.get_snames())
        names.push_back("-" + name);
    return names;
}

const CLI::Option* optionNamed(const CLI::App& app, const std::string& name) {
    const auto options = app.get_options();
    const auto found = std::ranges::find_if(options, [&](const CLI::Option* option) {
        return std::ranges::count(typedNames(*option), name) > 0;
    });
    return found == options.end() ? nullptr : *found;
}

bool takesValue(const CLI::Option& option) {
    return option.get_items_expected_max() > 0;
}

class LineCompletion {
  public:
    // `current` is at most the number of words.
    LineCompletion(const CLI::App& app, std::vector<std::string> words, std::size_t current)
        : m_root(app), m_app(&app), m_words(std::move(words)), m_current(current) {
        m_typed = m_current < m_words.size() ? m_words[m_current] : std::string();
    }

    void complete() {
        std::size_t at = 0;
        while (at < m_current) {
            const CLI::App* const command = commandNamed(*m_app, m_words[at]);
            if (command == nullptr)
                break;
            m_app = command;
            ++at;
        }
        // Words without a command are a question.
        const bool isFirst = at == m_current && m_app == &m_root;
        if (m_app == &m_root)
            m_app = commandNamed(m_root, "find");
        const CLI::Option* const unfinished = readWords(at);
        if (unfinished != nullptr)
            completeValue(unfinished->get_type_name(), "", m_typed);
        else if (m_typed.starts_with('-') && !m_isAfterOptions)
            completeOption(isFirst);
        else
            completeWord(isFirst);
    }

    [[nodiscard]] const std::vector<Candidate>& candidates() const noexcept { return m_candidates; }
    [[nodiscard]] bool wantsFolders() const noexcept { return m_wantsFolders; }

  private:
    // Notes the values of options and the words before the current one. Returns the option that the
    // current word is the value of, or null.
    const CLI::Option* readWords(std::size_t at) {
        const CLI::Option* open = nullptr;
        const CLI::Option* ofCurrent = nullptr;
        for (; at < m_words.size(); ++at) {
            const std::string& word = m_words[at];
            if (at == m_current) {
                ofCurrent = open;
                // What is typed after it still says which documentation is meant.
                m_isAfterCurrent = true;
                open = nullptr;
                continue;
            }
            if (open != nullptr) {
                m_values[open->get_lnames().front()].push_back(word);
                open = nullptr;
                continue;
            }
            const auto equals = std::min(word.find('='), word.size());
            const CLI::Option* const option =
                m_isAfterOptions ? nullptr : optionNamed(*m_app, word.substr(0, equals));
            if (word == "--" && !m_isAfterCurrent)
                m_isAfterOptions = true;
            else if (option != nullptr && equals < word.size())
                m_values[option->get_lnames().front()].push_back(word.substr(equals + 1));
            else if (option != nullptr && takesValue(*option))
                open = option;
            else if (option == nullptr && !word.starts_with('-') && !m_isAfterCurrent)
                m_positionals.push_back(word);
        }
        return m_isAfterCurrent ? ofCurrent : open;
    }

    void add(const std::string& text, const std::string& description) {
        if (text.starts_with(m_typed))
            m_candidates.push_back({.text = text, .description = description});
    }

    // Offers what the name of a value, or of a positional argument, stands for.
    void completeValue(const std::string& kind, const std::string& before,
                       const std::string& typed) {
        if (kind == "FOLDER" || kind == "ROOT" || kind == "DIR")
            m_wantsFolders = true;
        else if (kind == "PRODUCT" || kind == "NAME")
            addProducts(before);
        else if (kind == "TYPE")
            addTypes(before);
        else if (kind == "LOCALE")
            addLocales(before);
        else if (kind.starts_with("KEY"))
            addOrderKeys(before, typed);
        else if (kind.find('|') != std::string::npos)
            for (const auto& choice : dividedAt("|", kind))
                add(before + choice, "");
    }

    void completeOption(bool isFirst) {
        const auto equals = m_typed.find('=');
        if (equals != std::string::npos) {
            const auto* const option = optionNamed(*m_app, m_typed.substr(0, equals));
            if (option != nullptr && takesValue(*option))
                completeValue(option->get_type_name(), m_typed.substr(0, equals + 1),
                              m_typed.substr(equals + 1));
            return;
        }
        const auto addOptions = [this](const CLI::App& app) {
            for (const CLI::Option* option : app.get_options())
                for (const auto& name : typedNames(*option))
                    if (std::ranges::count(m_candidates, name, &Candidate::text) == 0)
                        add(name, option->get_description());
        };
        addOptions(*m_app);
        if (isFirst)
            addOptions(m_root);
    }

    void completeWord(bool isFirst) {
        if (isFirst)
            addCommands(m_root);
        if (!m_app->get_subcommands({}).empty())
            return addCommands(*m_app);
        for (const CLI::Option* option : m_app->get_options()) {
            if (!option->get_positional())
                continue;
            const std::string& kind = option->get_name();
            if (!m_positionals.empty() && option->get_items_expected_max() == 1)
                continue;
            if (kind == "WORDS")
                completeQuestion();
            else if (kind == "BEGINNING")
                addNames("", m_typed);
            else if (kind == "COMMAND")
                completeCommand();
            else
                completeValue(kind, "", m_typed);
        }
    }

    void addCommands(const CLI::App& app) {
        for (const CLI::App* command : app.get_subcommands({}))
            add(command->get_name(), command->get_description());
    }

    void completeCommand() {
        const CLI::App* app = &m_root;
        for (const auto& word : m_positionals)
            if (app != nullptr)
                app = commandNamed(*app, word);
        if (app != nullptr)
            addCommands(*app);
    }

    // A word, or several within quotation marks, of which the last is completed.
    void completeQuestion() {
        const std::size_t begin = m_typed.find_last_of(" \t\n") + 1;
        const std::string before = m_typed.substr(0, begin);
        const std::string word = m_typed.substr(begin);
        const auto colon = word.find(':');
        const auto filters = ask::Question::filters();
        const auto filter = std::ranges::find_if(filters, [&](const auto& known) {
            return colon != std::string::npos && toUtf8(known.name) == word.substr(0, colon);
        });
        if (filter == filters.end()) {
            for (const auto& known : filters)
                if (!word.empty())
                    add(before + toUtf8(known.name) + ":", "Filter");
            return addNames(before, word);
        }
        // Values have commas between them.
        const std::string given = before + word.substr(0, word.find_last_of(",:") + 1);
        for (const auto value : filter->values)
            add(given + toUtf8(value), "");
        if (filter->name == u"type")
            addTypes(given);
        else if (filter->name == u"product")
            addProducts(given);
    }

    void addTypes(const std::string& before) {
        for (const auto type : RefEntityType::namedValues())
            add(before + RefEntityType::enumToString(type), "");
    }

    void addOrderKeys(const std::string& before, const std::string& typed) {
        const std::string given = before + typed.substr(0, typed.rfind(',') + 1);
        for (const auto& key : dividedAt(", ", Ordering::knownKeys())) {
            // "name=NAME" goes on after the sign.
            const auto equals = key.find('=');
            add(given + key.substr(0, equals == std::string::npos ? equals : equals + 1), "");
        }
    }

    void addProducts(const std::string& before) {
        if (!isDocumented())
            return;
        ReferenceCacheManager::PopulateLookupCache();
        for (const auto& [name, lookup] : *ReferenceCacheManager::GetLookupCache())
            add(before + toUtf8(name), shown(lookup.getHeaderInfo().getDisplayName()));
    }

    void addLocales(const std::string& before) {
        if (!isDocumented())
            return;
        for (const auto& locale :
             docparser::DocResourceParser::ParsingTools::getSupportedDocLocales())
            add(before + toUtf8(locale), "");
    }

    // The library may complete a name in another case than it was typed in.
    void addNames(const std::string& before, const std::string& typed) {
        if (!isDocumented())
            return;
        ask::CompleteOptions options{.limit = mostNames};
        for (const auto& product : m_values["product"])
            options.products.push_back(fromCommandLine(product));
        for (const auto& product : m_values["prefer"])
            options.preferredProducts.push_back(fromCommandLine(product));
        for (const auto& product : m_usuallyPrefer)
            options.preferredProducts.push_back(fromCommandLine(product));
        for (const auto& completion : ask::complete(fromCommandLine(typed), options)) {
            std::string description =
                completion.isName ? RefEntityType::enumToString(completion.type) : std::string();
            if (!completion.purpose.empty())
                description += ": " + shown(completion.purpose);
            m_candidates.push_back(
                {.text = before + shown(completion.text), .description = std::move(description)});
        }
    }

    // Whether there is documentation to complete from.
    bool isDocumented() {
        const auto last = [this](const char* option) {
            const auto& values = m_values[option];
            return values.empty() ? std::string() : values.back();
        };
        try {
            if (!m_documentation) {
                GivenSettings given;
                given.docRoot = withHome(last("doc-root"));
                given.language = last("language");
                const auto configuration = Configuration::inForce(given);
                m_usuallyPrefer = configuration.preferredProducts.value;
                m_documentation.emplace(configuration.documentation(),
                                        [](const std::string& /*message*/) {});
            }
        } catch (const std::exception&) {
            return false;
        }
        return true;
    }

    static std::vector<std::string> dividedAt(std::string_view separator, std::string_view text) {
        std::vector<std::string> parts;
        for (std::size_t begin = 0; begin <= text.size();) {
            const auto end = std::min(text.find(separator, begin), text.size());
            parts.emplace_back(text.substr(begin, end - begin));
            begin = end + separator.size();
        }
        return parts;
    }

    const CLI::App& m_root;
    const CLI::App* m_app;
    const std::vector<std::string> m_words;
    const std::size_t m_current;
    std::string m_typed;
    // What was given before the current word, and, of options, after it.
    std::map<std::string, std::vector<std::string>> m_values;
    std::vector<std::string> m_positionals;
    bool m_isAfterOptions = false;
    bool m_isAfterCurrent = false;
    std::optional<Documentation> m_documentation;
    std::vector<std::string> m_usuallyPrefer;  // products, by the configuration
    std::vector<Candidate> m_candidates;
    bool m_wantsFolders = false;
};

// The number of the word that is being typed, and whether the words are as they were typed; nothing
// for arguments of another form.
struct LineArguments {
    std::size_t current = 0;
    std::vector<std::string> words;
};

std::optional<LineArguments> readArguments(std::span<const std::string> arguments) {
    const auto divider = std::ranges::find(arguments, "--");
    const auto options = static_cast<std::size_t>(divider - arguments.begin());
    if (divider == arguments.end() || options < 3)
        return std::nullopt;
    LineArguments line;
    const std::string& number = arguments[2];
    const auto [end, error] =
        std::from_chars(number.data(), number.data() + number.size(), line.current);
    const bool isQuoted = std::ranges::count(arguments.first(options), quotedOption) > 0;
    for (const auto& word : arguments.subspan(options + 1))
        line.words.push_back(isQuoted ? unquoted(word) : word);
    if (error != std::errc{} || end != number.data() + number.size() ||
        line.current > line.words.size())
        return std::nullopt;
    return line;
}

}  // namespace

bool isLineCompletion(std::span<const std::string> arguments) {
    return arguments.size() > 1 && arguments[0] == "complete" && arguments[1] == wordsOption;
}

ExitStatus completeLine(const CLI::App& app, std::span<const std::string> arguments) {
    auto line = readArguments(arguments);
    if (!line)
        return NothingFound;
    LineCompletion completion(app, std::move(line->words), line->current);
    try {
        completion.complete();
    } catch (const std::exception&) {
        // What was found before it is as good.
    }
    for (const auto& candidate : completion.candidates())
        std::cout << printableLine(candidate.text) << '\t' << printableLine(candidate.description)
                  << '\n';
    if (completion.wantsFolders())
        std::cout << "\tfolders\n";
    return completion.candidates().empty() && !completion.wantsFolders() ? NothingFound : Success;
}

}  // namespace reference::tools
