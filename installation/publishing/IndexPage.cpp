#include "installation/publishing/Pages.h"

#include "installation/publishing/Html.h"
#include "installation/publishing/PageFrame.h"

#include <algorithm>

namespace devinst {

namespace {

// The page's own words, in the languages that it knows; English for all others.
struct Words {
    const wchar_t *revision, *metadata, *contents, *objects, *name, *partNumber, *picture, *facts,
        *settings, *training, *none, *more;
};

constexpr Words English = {L"Revision", L"Metadata",         L"Documents", L"Referenced objects",
                           L"Name",     L"Part number",      L"Picture",   L"Publication",
                           L"Settings", L"Training edition", L"None",      L"and more"};
constexpr Words German = {L"Revision",
                          L"Metadaten",
                          L"Dokumente",
                          L"Referenzierte Objekte",
                          L"Name",
                          L"Teilenummer",
                          L"Bild",
                          L"Ver\x00F6"
                          L"ffentlichung",
                          L"Einstellungen",
                          L"Schulungsausgabe",
                          L"Keine",
                          L"und weitere"};

const Words& WordsOf(const std::wstring& language) {
    return language == L"de" ? German : English;
}

std::string Row(const std::string& id, const std::wstring& label, const std::wstring& value) {
    return "<tr id=\"" + id + "\"><th>" + Html(label) + "</th><td>" + Html(value) + "</td></tr>\n";
}

std::string Section(const char* id, const std::wstring& heading, const std::string& content) {
    return std::string("<section id=\"") + id + "\">\n<h2>" + Html(heading) + "</h2>\n" + content +
           "</section>\n";
}

std::wstring TitleOf(const ProjectContent& project) {
    for (const auto& [name, value] : project.metadata) {
        if (name == L"Title" && !value.empty())
            return value;
    }
    return project.name;
}

std::string MetadataTable(const Publication& publication, const Words& words) {
    std::string rows;
    for (const auto& [name, value] : publication.project.metadata)
        rows += "<tr><th>" + Html(name) + "</th><td>" + Html(value) + "</td></tr>\n";
    return rows.empty() ? "<p>" + Html(words.none) + "</p>\n" : "<table>\n" + rows + "</table>\n";
}

std::string DocumentList(const std::vector<DocumentEntry>& documents, const Words& words) {
    std::string entries;
    for (const DocumentEntry& document : documents) {
        const std::string address = "documents/" + HtmlAddress(document.name);
        entries += "<li><a href=\"" + address + (document.hasPage ? ".html" : "") + "\">" +
                   Html(document.name) + "</a></li>\n";
    }
    return entries.empty() ? "<p>" + Html(words.none) + "</p>\n" : "<ul>\n" + entries + "</ul>\n";
}

std::string ObjectRow(const Publication& publication, const PublishedObject& object) {
    const std::string picture = object.representation.empty()
                                    ? std::string()
                                    : Picture(publication, "", object.representation);
    return "<tr class=\"object\" data-id=\"" + Html(object.id) + "\"><td>" + Html(object.name) +
           "</td><td>" + Html(object.partNumber) + "</td><td>" + picture + "</td></tr>\n";
}

std::string ObjectTable(const Publication& publication, const Words& words) {
    const std::vector<PublishedObject>& objects = publication.objects;
    if (objects.empty())
        return "<p>" + Html(words.none) + "</p>\n";
    std::string table = "<table data-count=\"" + std::to_string(objects.size()) + "\">\n<tr><th>" +
                        Html(words.name) + "</th><th>" + Html(words.partNumber) + "</th><th>" +
                        Html(words.picture) + "</th></tr>\n";
    const std::size_t shown =
        std::min(objects.size(), static_cast<std::size_t>(publication.settings.tableRows));
    for (std::size_t i = 0; i < shown; ++i)
        table += ObjectRow(publication, objects[i]);
    if (shown < objects.size())
        table += "<tr class=\"more\"><td colspan=\"3\">" + Html(words.more) + "</td></tr>\n";
    return table + "</table>\n";
}

std::string FactTable(const Publication& publication) {
    std::string rows;
    for (const Fact& fact : publication.facts) {
        const std::string id = fact.id;
        std::wstring label(id.begin(), id.end());
        std::replace(label.begin(), label.end(), L'-', L' ');
        rows += Row("fact-" + id, label, fact.value);
    }
    return "<table>\n" + rows + "</table>\n";
}

std::string SettingTable(const PublicationSettings& settings) {
    wchar_t scale[32] = {};
    _snwprintf(scale, std::size(scale) - 1, L"%g", settings.scale);
    return "<table>\n" + Row("setting-accent", L"Accent", settings.accent) +
           Row("setting-footer", L"Footer", settings.footer) +
           Row("setting-documents", L"ShowDocuments", settings.showDocuments ? L"yes" : L"no") +
           Row("setting-rows", L"TableRows", std::to_wstring(settings.tableRows)) +
           Row("setting-scale", L"Scale", scale) + "</table>\n";
}

} // namespace

std::string IndexPage(const Publication& publication, const std::vector<DocumentEntry>& documents) {
    const Words& words = WordsOf(publication.language);
    const ProjectContent& project = publication.project;
    const std::wstring title = TitleOf(project);
    std::string content = "<header>\n<p>" + Html(project.name) + " \xC2\xB7 " +
                          Html(words.revision) + " " + Html(project.revision) + "</p>\n<h1>" +
                          Html(title) + "</h1>\n";
    if (publication.learning)
        content += "<p id=\"training\">" + Html(words.training) + "</p>\n";
    content += "</header>\n<main>\n";
    content += Section("metadata", words.metadata, MetadataTable(publication, words));
    if (publication.settings.showDocuments)
        content += Section("documents",
                           publication.contents.empty() ? words.contents : publication.contents,
                           DocumentList(documents, words));
    content += Section("objects", words.objects, ObjectTable(publication, words));
    content += Section("facts", words.facts, FactTable(publication));
    content += Section("settings", words.settings, SettingTable(publication.settings));
    return PageFrame(publication, "", title, content + "</main>\n");
}

std::string StyleSheet(const PublicationSettings& settings) {
    return ReplaceAll("body { margin: 0; font: 16px/1.5 sans-serif; color: #222; "
                      "background: #f4f5f7; }\n"
                      "header { background: ACCENT; color: #fff; padding: 1.5em 10%; }\n"
                      "h1, td { overflow-wrap: anywhere; }\n"
                      "header h1 { margin: 0; }\nheader p { margin: 0; opacity: .85; }\n"
                      "main { padding: 1em 10%; }\n"
                      "section { background: #fff; border-radius: 6px; margin: 1em 0; "
                      "padding: .5em 1.5em 1em; box-shadow: 0 1px 3px #0002; }\n"
                      "h2, h3 { color: ACCENT; }\n"
                      "table { border-collapse: collapse; width: 100%; }\n"
                      "th, td { text-align: left; padding: .3em .6em; "
                      "border-bottom: 1px solid #e3e5e8; vertical-align: top; }\n"
                      "#metadata th, #facts th, #settings th { width: 14em; font-weight: normal; "
                      "color: #666; }\n"
                      "a { color: ACCENT; }\nheader a { color: inherit; }\n"
                      "ins { background: #e3f6e3; }\ndel { background: #fbe3e3; }\n"
                      "ins > *, del > * { background: inherit; }\n"
                      "footer { padding: 1em 10% 2em; color: #666; }\n",
                      "ACCENT", Html(settings.accent));
}

} // namespace devinst
