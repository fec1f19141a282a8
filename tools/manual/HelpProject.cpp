#include "tools/manual/HelpProject.h"

#include "base/CodePage1252.h"

namespace quill::manual {
namespace {

std::string Escaped(std::string_view text) {
  std::string xml;
  for (const char c : text) {
    if (c == '&') {
      xml += "&amp;";
    } else if (c == '<') {
      xml += "&lt;";
    } else if (c == '"') {
      xml += "&quot;";
    } else {
      xml += c;
    }
  }
  return xml;
}

std::string Attribute(std::string_view name, std::string_view value) {
  return " " + std::string(name) + "=\"" + Escaped(value) + "\"";
}

std::string Element(std::string_view name, std::string_view text) {
  return "<" + std::string(name) + ">" + Escaped(text) + "</" + std::string(name) + ">\n";
}

void AppendSections(std::string& xml, const std::vector<Section>& sections, const std::string& indent) {
  for (const Section& section : sections) {
    xml += indent + "<section" + Attribute("title", section.title) + Attribute("ref", section.target) + ">\n";
    AppendSections(xml, section.sections, indent + "  ");
    xml += indent + "</section>\n";
  }
}

constexpr std::string_view kXmlHead = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

}  // namespace

std::string ProjectXml(const HelpProject& project) {
  std::string xml(kXmlHead);
  xml += "<QtHelpProject version=\"1.0\">\n";
  xml += Element("namespace", kHelpNamespace) + Element("virtualFolder", kHelpFolder);
  xml += "<filterSection>\n<toc>\n";
  AppendSections(xml, project.contents, "  ");
  xml += "</toc>\n<keywords>\n";
  for (const IndexWord& entry : project.index) {
    xml += "  <keyword" + Attribute("name", entry.word) + Attribute("id", cp1252::ToLower(entry.word)) +
           Attribute("ref", entry.target) + "/>\n";
  }
  xml += "</keywords>\n<files>\n";
  for (const std::string& file : project.files) xml += "  " + Element("file", file);
  return xml + "</files>\n</filterSection>\n</QtHelpProject>\n";
}

std::string CollectionXml(std::string_view projectName) {
  return std::string(kXmlHead) +
         "<QHelpCollectionProject version=\"1.0\">\n<docFiles>\n<generate>\n<file>\n" +
         Element("input", projectName) + Element("output", kCompiledName) +
         "</file>\n</generate>\n<register>\n" + Element("file", kCompiledName) +
         "</register>\n</docFiles>\n</QHelpCollectionProject>\n";
}

}  // namespace quill::manual
