#include "report/page.h"

#include <nlohmann/json.hpp>

#include "report/schema.h"
#include "report_parts.h"

namespace ostrel::report {
namespace {

using nlohmann::json;

/// JSON that can stand inside of a page: a '<', which it has in texts alone, could begin a tag.
std::string withoutTags(std::string_view text) {
  std::string safe;
  for (const char c : text) {
    if (c == '<') {
      safe += "\\u003c";
    } else {
      safe += c;
    }
  }
  return safe;
}

/// Appends the text of the page in front of a mark, which it takes out with it.
void appendUpTo(std::string_view mark, std::string_view& rest, std::string& page) {
  const std::size_t at = rest.find(mark);
  page += rest.substr(0, at);
  rest.remove_prefix(at + mark.size());
}

}  // namespace

std::string faultInReport(std::string_view text) {
  json report;
  try {
    report = json::parse(text);
  } catch (const json::exception& fault) {
    return fault.what();
  }
  const bool isReport = report.is_object() && report.contains("format") &&
                        report["format"].is_string() && report["format"] == "ostrel-report";
  if (!isReport) return "it is no report of ostrel";
  const std::string fault = faultOf(report, json::parse(schemaText));
  return fault.empty() ? danglingIn(report) : fault;
}

std::string makePage(std::span<const std::string> reports) {
  std::string page;
  std::string_view rest = pageHtml;
  appendUpTo("@STYLE@", rest, page);
  page += pageStyle;
  appendUpTo("@RUNS@", rest, page);
  page += '[';
  for (const std::string& report : reports) {
    if (&report != &reports.front()) page += ',';
    page += withoutTags(report);
  }
  page += ']';
  appendUpTo("@SCRIPT@", rest, page);
  page += pageScript;
  return page += rest;
}

}  // namespace ostrel::report
