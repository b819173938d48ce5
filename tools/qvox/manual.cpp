#include "manual.h"

#include <string_view>
#include <vector>

#include <qvox/qvox.h>

#include "target_encoding.h"

namespace {

// Text for roff: no line of it is a request, and a hyphen is the one that people type.
std::string roff(std::string_view text) {
    std::string out;
    bool isLineStart = true;
    for (const char c : text) {
        if (isLineStart && (c == '.' || c == '\'')) out += "\\&";
        if (c == '\\') {
            out += "\\e";
        } else if (c == '-') {
            out += "\\-";
        } else {
            out += c;
        }
        isLineStart = c == '\n';
    }
    return out;
}

// As it is, with its line breaks and indents.
std::string verbatim(std::string_view text) { return ".nf\n" + roff(text) + "\n.fi\n"; }

// "-o, --output OUT", or the name of an argument.
std::string names_of(const CLI::Option& option) {
    if (option.get_positional()) return option.get_name();
    std::string names;
    for (const std::string& name : option.get_snames())
        names += (names.empty() ? "-" : ", -") + name;
    for (const std::string& name : option.get_lnames()) {
        names += (names.empty() ? "--" : ", --") + name;
    }
    if (option.get_items_expected_max() > 0) names += ' ' + option.get_type_name();
    return names;
}

void append_options(std::string& page, const CLI::App& app) {
    for (const CLI::Option* const option : app.get_options()) {
        page +=
            ".TP\n.B " + roff(names_of(*option)) + '\n' + roff(option->get_description()) + '\n';
    }
}

std::vector<const CLI::App*> commands_of(const CLI::App& program) {
    return program.get_subcommands([](const CLI::App*) { return true; });
}

std::string long_options(const CLI::App& app) {
    std::string words;
    for (const CLI::Option* const option : app.get_options()) {
        for (const std::string& name : option->get_lnames()) words += " --" + name;
    }
    return words.empty() ? words : words.substr(1);
}

}  // namespace

std::string manual_page(const CLI::App& program) {
    std::string page = ".TH QVOX 1 \"\" \"qvox " QVOX_VERSION "\"\n.SH NAME\nqvox \\- " +
                       roff(program.get_description()) + "\n.SH SYNOPSIS\n";
    for (const CLI::App* const command : commands_of(program)) {
        page += ".B qvox " + roff(command->get_name()) + "\n[\\fIOPTION\\fR]... \\fIFILE\\fR" +
                (command->get_option("FILE")->get_items_expected_max() > 1 ? "..." : "") +
                "\n.br\n";
    }
    page += ".SH OPTIONS\n";
    append_options(page, program);
    page += ".SH COMMANDS\n";
    for (const CLI::App* const command : commands_of(program)) {
        page += ".SS " + roff(command->get_name()) + '\n' + roff(command->get_description()) + '\n';
        append_options(page, *command);
        page += ".PP\n" + verbatim(command->get_footer());
    }
    return page + ".SH NOTES\n" + verbatim(program.get_footer());
}

std::string bash_completion(const CLI::App& program) {
    std::string names;
    std::string cases;
    for (const CLI::App* const command : commands_of(program)) {
        names += command->get_name() + ' ';
        cases +=
            "        " + command->get_name() + ") options=\"" + long_options(*command) + "\" ;;\n";
    }
    return "# Completion of bash for qvox " QVOX_VERSION
           ".\n"
           "_qvox() {\n"
           "    local word=${COMP_WORDS[COMP_CWORD]} options\n"
           "    if ((COMP_CWORD == 1)); then\n"
           "        COMPREPLY=($(compgen -W \"" +
           names + long_options(program) +
           "\" -- \"$word\"))\n"
           "        return\n"
           "    fi\n"
           "    if [[ ${COMP_WORDS[COMP_CWORD - 1]} == --to ]]; then\n"
           "        COMPREPLY=($(compgen -W \"" +
           target_encoding_names(" ") +
           "\" -- \"$word\"))\n"
           "        return\n"
           "    fi\n"
           "    case ${COMP_WORDS[1]} in\n" +
           cases +
           "    esac\n"
           "    if [[ $word == -* ]]; then\n"
           "        COMPREPLY=($(compgen -W \"$options\" -- \"$word\"))\n"
           "    else\n"
           "        compopt -o filenames\n"
           "        COMPREPLY=($(compgen -f -- \"$word\"))\n"
           "    fi\n"
           "}\n"
           "complete -F _qvox qvox\n";
}
