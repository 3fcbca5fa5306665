#include <functional>
#include <map>
#include <string>

#include "Velko/Commands/GrammarTexts.h"

namespace velko::commands {

namespace {

/// A text within single quotes of a shell.
std::string singleQuoted(std::string_view text) {
    std::string quoted = "'";
    for (const char character : text) {
        quoted += character == '\'' ? "'\\''" : std::string(1, character);
    }
    return quoted + "'";
}

/// A command of two words is completed in two steps.
struct Parts {
    explicit Parts(const Row& row)
        : first(row.words.substr(0, row.words.find(' '))), second(row.words.substr(first.size())) {
        second.remove_prefix(second.empty() ? 0 : 1);
    }

    std::string_view first;
    std::string_view second;  ///< may be empty
};

/// What a first word is about that has a second one, and maybe is a command alone too.
std::string_view aboutGroup(std::string_view first) {
    return first == "history" ? rowOf(Verb::history).help : "the layout as a file";
}

/// Calls `add` with each first word and its help, once.
void forEachFirstWord(const std::function<void(std::string_view word, std::string_view help)>& add) {
    std::string_view last;
    for (const Row& row : rows()) {
        const Parts parts(row);
        if (parts.first != last) {
            add(parts.first, parts.second.empty() ? row.help : aboutGroup(parts.first));
            last = parts.first;
        }
    }
}

/// The words that may stand in a place, with spaces between them.
std::string listOf(std::span<const std::string_view> words) {
    std::string list;
    for (const std::string_view word : words) {
        list.append(list.empty() ? "" : " ").append(word);
    }
    return list;
}

std::string firstWords() {
    std::string list;
    forEachFirstWord(
        [&](std::string_view word, std::string_view) { list.append(list.empty() ? "" : " ").append(word); });
    return list;
}

/// What an argument can be, where that is one of a few words.
std::string choicesFor(const Argument& argument) {
    return argument.kind == Kind::command ? firstWords() : listOf(wordsFor(argument.kind));
}

/// The first words after which a second one comes, with those.
std::map<std::string, std::string> groups() {
    std::map<std::string, std::string> lists;
    for (const Row& row : rows()) {
        if (const Parts parts(row); !parts.second.empty()) {
            std::string& list = lists[std::string(parts.first)];
            list.append(list.empty() ? "" : " ").append(parts.second);
        }
    }
    return lists;
}

/// Such words as a pattern of the shell's `case`: "history/restore|layout/export".
std::string groupPattern() {
    std::string pattern;
    for (const Row& row : rows()) {
        if (const Parts parts(row); !parts.second.empty()) {
            pattern.append(pattern.empty() ? "" : "|").append(parts.first).append("/").append(parts.second);
        }
    }
    return pattern;
}

/// Calls `add` with each argument that can be completed and its place, counted from 1.
void forEachArgument(
    const std::function<void(const Row& row, const Argument& argument, std::size_t place)>& add) {
    for (const Row& row : rows()) {
        for (std::size_t index = 0; index < row.arguments.size(); ++index) {
            const Kind kind = row.arguments.at(index).kind;
            if (kind != Kind::none && kind != Kind::text && kind != Kind::number) {
                add(row, row.arguments.at(index), index + 1);
            }
        }
    }
}

/// A branch of the shell's `case`.
std::string branch(const std::string& pattern, const std::string& does) {
    return "            " + singleQuoted(pattern) + ") " + does + " ;;\n";
}

std::string placeOf(const Row& row, std::size_t place) {
    return std::string(row.words) + "/" + std::to_string(place);
}

/// The branches for options and for arguments. `offer` is the shell's way to offer a list of words.
std::string branches(const std::function<std::string(const std::string& words)>& offer,
                     const std::string& apps, const std::string& files) {
    std::string options;
    std::string arguments;
    for (const Row& row : rows()) {
        if (!row.option.word.empty()) {
            options += branch(std::string(row.words), offer(std::string(row.option.word)));
        }
    }
    forEachArgument([&](const Row& row, const Argument& argument, std::size_t place) {
        const std::string does = argument.kind == Kind::app    ? apps
                                 : argument.kind == Kind::file ? files
                                                               : offer(choicesFor(argument));
        arguments += branch(placeOf(row, place), does);
    });
    for (const auto& [first, second] : groups()) {
        arguments += branch(first + "/1", offer(second));
    }
    return "    elif [[ $word == -* ]]; then\n        case \"$command\" in\n" + options +
           "        esac\n    else\n        case \"$command/$place\" in\n" + arguments +
           "        esac\n    fi\n";
}

std::string bashCompletions() {
    const auto offer = [](const std::string& words) { return "words=\"" + words + "\""; };
    return R"sh(# Completions of velko for bash.
_velko() {
    local word=${COMP_WORDS[COMP_CWORD]} command=${COMP_WORDS[1]} place=$((COMP_CWORD - 1)) words=
    if ((COMP_CWORD > 2)); then
        case "$command/${COMP_WORDS[2]}" in
            )sh" +
           groupPattern() +
           R"sh() command="$command ${COMP_WORDS[2]}" place=$((place - 1)) ;;
        esac
    fi
    COMPREPLY=()
    if ((COMP_CWORD == 1)); then
        )sh" +
           offer(firstWords()) + "\n" +
           branches(offer, "words=$(velko list 2>/dev/null | cut -f3)", "return") +
           R"sh(    COMPREPLY=($(compgen -W "$words" -- "$word"))
}
complete -o default -F _velko velko
)sh";
}

std::string zshCompletions() {
    const auto offer = [](const std::string& words) { return "compadd -- " + words; };
    std::string commands;
    forEachFirstWord([&](std::string_view word, std::string_view help) {
        commands += "        " + singleQuoted(std::string(word) + ":" + std::string(help)) + "\n";
    });
    return R"sh(#compdef velko
# Completions of velko for zsh.
_velko_apps() {
    local -a apps
    apps=(${(f)"$(velko list 2>/dev/null | awk -F '\t' '{ print $3 ":" $2 }')"})
    _describe app apps
}
_velko() {
    local -a commands=(
)sh" + commands +
           R"sh(    )
    local word=$words[CURRENT] command=$words[2]
    local -i place=$((CURRENT - 2))
    if ((CURRENT > 3)); then
        case "$command/$words[3]" in
            )sh" +
           groupPattern() +
           R"sh() command="$command $words[3]"; ((place -= 1)) ;;
        esac
    fi
    if ((CURRENT == 2)); then
        _describe command commands
)sh" + branches(offer, "_velko_apps", "_files") +
           R"sh(}
if [[ $funcstack[1] == _velko ]]; then
    _velko "$@"
else
    compdef _velko velko
fi
)sh";
}

std::string fishCompletions() {
    std::string text = R"(# Completions of velko for fish.
function __velko_apps
    velko list 2>/dev/null | string replace -r '^[^\t]*\t([^\t]*)\t([^\t]*).*' '$2\t$1'
end
function __velko_after
    set -l words (commandline -opc)
    test "$words[2..]" = "$argv[1]"
end
function __velko_within
    set -l words (commandline -opc)
    test (count $words) -eq (math $argv[2] + (count (string split ' ' $argv[1])))
    and string match -q -- "$argv[1] *" "$words[2..] "
end
complete -c velko -f
)";
    const auto complete = [](const std::string& condition, const std::string& offers) {
        return "complete -c velko -n " + singleQuoted(condition) + " " + offers + "\n";
    };
    forEachFirstWord([&](std::string_view word, std::string_view help) {
        text += complete("__velko_after ''", "-a " + std::string(word) + " -d " + singleQuoted(help));
    });
    for (const Row& row : rows()) {
        const Parts parts(row);
        if (!parts.second.empty()) {
            text += complete("__velko_after " + std::string(parts.first),
                             "-a " + std::string(parts.second) + " -d " + singleQuoted(row.help));
        }
        if (const Option& option = row.option; !option.word.empty()) {
            const bool isLong = option.word.starts_with("--");
            text +=
                complete("__fish_seen_subcommand_from " + std::string(parts.first),
                         (isLong ? "-l " : "-s ") + std::string(option.word.substr(isLong ? 2 : 1)) +
                             (option.value.name.empty() ? "" : " -x") + " -d " + singleQuoted(option.help));
        }
    }
    forEachArgument([&](const Row& row, const Argument& argument, std::size_t place) {
        const std::string offers = argument.kind == Kind::app    ? "-a '(__velko_apps)'"
                                   : argument.kind == Kind::file ? "-F"
                                                                 : "-a " + singleQuoted(choicesFor(argument));
        text +=
            complete("__velko_within \"" + std::string(row.words) + "\" " + std::to_string(place), offers);
    });
    return text;
}

}  // namespace

std::string completionsFor(std::string_view shell) {
    return shell == "bash" ? bashCompletions() : shell == "fish" ? fishCompletions() : zshCompletions();
}

}  // namespace velko::commands
