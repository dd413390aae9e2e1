#include "headless/cli/manual_pages.h"

#include "headless/cli/shown_options.h"

#include <algorithm>
#include <cctype>
#include <sstream>

namespace zn::headless {

namespace {

// A leading dot or apostrophe and every backslash and hyphen are special to roff.
std::string roff(const std::string& text) {
    std::string result;
    for (const char c : text) {
        const bool lineStart = result.empty() || result.back() == '\n';
        if (lineStart && (c == '.' || c == '\'')) result += "\\&";
        result += c == '\\' ? "\\e" : c == '-' ? "\\-" : std::string(1, c);
    }
    return result;
}

// "znica run" -> "znica-run", as the page is called.
std::string pageName(const CLI::App& app) {
    std::string name = fullName(app);
    std::replace(name.begin(), name.end(), ' ', '-');
    return name;
}

// "Analyse a 4D image: maps." -> "analyse a 4D image: maps", as `whatis` shows it.
std::string oneLine(std::string description) {
    description = description.substr(0, description.find(". "));
    if (description.ends_with('.')) description.pop_back();
    if (!description.empty()) {
        description[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(description[0])));
    }
    return description;
}

void describeOptions(const CLI::App& app, std::ostringstream& page) {
    page << ".SH OPTIONS\n";
    for (const auto* option : shownOptions(app)) {
        page << ".TP\n.B " << roff(synopsis(*option)) << '\n' << roff(option->get_description()) << '\n';
    }
}

void describeCommands(const CLI::App& app, std::ostringstream& page) {
    if (shownCommands(app).empty()) return;
    page << ".SH COMMANDS\nEach has a manual page.\n";
    for (const auto* command : shownCommands(app)) {
        page << ".TP\n.BR " << roff(pageName(*command)) << " (1)\n" << roff(command->get_description()) << '\n';
    }
}

// Verbatim, line by line.
void describeFooter(const CLI::App& app, std::ostringstream& page) {
    if (!app.get_footer().empty()) page << ".SH NOTES\n.nf\n" << roff(app.get_footer()) << "\n.fi\n";
}

std::string manualPage(const CLI::App& app, const std::string& version, const std::string& seeAlso) {
    std::ostringstream page;
    std::string title = pageName(app);
    std::transform(title.begin(), title.end(), title.begin(), [](unsigned char c) { return std::toupper(c); });
    page << ".TH " << roff(title) << " 1 \"\" \"znica " << version << "\" \"User Commands\"\n"
         << ".SH NAME\n"
         << roff(pageName(app)) << " \\- " << roff(oneLine(app.get_description())) << '\n'
         << ".SH SYNOPSIS\n.B " << roff(usage(app)) << '\n'
         << ".SH DESCRIPTION\n"
         << roff(app.get_description()) << '\n';
    describeOptions(app, page);
    describeCommands(app, page);
    describeFooter(app, page);
    if (!seeAlso.empty()) page << ".SH SEE ALSO\n.BR " << roff(seeAlso) << " (1)\n";
    return page.str();
}

} // namespace

std::map<std::string, std::string> manualPages(const CLI::App& app, const std::string& version) {
    std::map<std::string, std::string> pages = {{pageName(app) + ".1", manualPage(app, version, "")}};
    for (const auto* command : shownCommands(app)) {
        pages[pageName(*command) + ".1"] = manualPage(*command, version, pageName(app));
    }
    return pages;
}

} // namespace zn::headless
