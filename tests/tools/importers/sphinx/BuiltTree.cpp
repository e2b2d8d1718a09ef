#include "BuiltTree.hpp"

#include <gtest/gtest.h>
#include <zlib.h>

#include "sphinx/PageReader.hpp"

namespace reference::tests {

using importers::sphinx::DescriptionFacts;
using importers::sphinx::HtmlArena;
using importers::sphinx::ImportOptions;
using importers::sphinx::ImportResult;

std::string inventoryFile(std::string_view lines, std::string_view project,
                          std::string_view version) {
    std::string file = "# Sphinx inventory version 2\n# Project: ";
    file.append(project).append("\n# Version: ").append(version);
    file += "\n# The remainder of this file is compressed using zlib.\n";
    const uLong length = lines.size();
    uLongf size = compressBound(length);
    std::string compressed(size, '\0');
    compress(reinterpret_cast<Bytef*>(compressed.data()), &size,
             reinterpret_cast<const Bytef*>(lines.data()), length);
    compressed.resize(size);
    return file + compressed;
}

BuiltTree& BuiltTree::object(std::string_view name, std::string_view type,
                             std::string_view location, int priority) {
    m_lines.append(name).append(" ").append(type).append(" ").append(std::to_string(priority));
    m_lines.append(" ").append(location).append(" -\n");
    return *this;
}

BuiltTree& BuiltTree::page(std::string_view name, std::string_view body) {
    m_folder.write(name, "<!DOCTYPE html><html><head><title>t</title></head><body>" +
                             std::string(body) + "</body></html>");
    return *this;
}

ImportOptions BuiltTree::options() const {
    ImportOptions options;
    options.source = m_folder.path();
    options.shortName = u"sample";
    options.threads = 1;
    return options;
}

ImportResult BuiltTree::import() const {
    m_folder.write("objects.inv", inventoryFile(m_lines));
    return importTree(options());
}

std::string described(std::string_view domain, std::string_view type, std::string_view anchor,
                      std::string_view signature, std::string_view body) {
    std::string html = "<dl class=\"";
    html.append(domain).append(" ").append(type).append("\">\n<dt class=\"sig sig-object ");
    html.append(domain).append("\" id=\"").append(anchor).append("\">");
    html.append("<span class=\"sig-name descname\">").append(signature).append("</span>");
    html.append("<a class=\"headerlink\" href=\"#\">\xC2\xB6</a></dt>\n<dd>");
    return html.append(body).append("</dd></dl>\n");
}

property::RefItem itemAt(const ImportResult& result, std::u16string_view href) {
    const auto found = result.documentation.pages.find(std::u16string(href));
    if (found == result.documentation.pages.end() || found->second.size() != 1) {
        ADD_FAILURE() << "not exactly one item at the href";
        return {};
    }
    return found->second.front();
}

property::RefItemLookup recordOf(const ImportResult& result, std::u16string_view name) {
    const auto found = result.documentation.entities.find(std::u16string(name));
    if (found == result.documentation.entities.end() || found->second.size() != 1) {
        ADD_FAILURE() << "not exactly one record of the name";
        return {};
    }
    return found->second.front();
}

DescriptionFacts readBody(std::string_view body) {
    const std::string page =
        "<dl class=\"py function\"><dt class=\"sig sig-object py\" id=\"m.f\">"
        "<span class=\"sig-prename descclassname\">m.</span>"
        "<span class=\"sig-name descname\">f</span><span class=\"sig-paren\">(</span>"
        "<em>x</em>, <em>flag=None</em><span class=\"sig-paren\">)</span></dt><dd>" +
        std::string(body) + "</dd></dl>";
    HtmlArena arena;
    auto facts = readPage(arena, page, "api/m.html", {{0, "m.f", false}});
    if (facts.descriptions.size() != 1) {
        ADD_FAILURE() << "not exactly one description; " << facts.fault;
        return {};
    }
    return facts.descriptions.front();
}

}  // namespace reference::tests
