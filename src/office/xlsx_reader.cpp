#include "office/xlsx_reader.h"

#include <algorithm>
#include <charconv>
#include <map>

#include "office/date_formats.h"
#include "office/read_failures.h"
#include "office/sheet_cells.h"
#include "office/xml_input.h"
#include "office/zip_file.h"
#include "util/date_text.h"
#include "util/text.h"

namespace luming {

namespace {

using Step = XmlInput::Step;

std::optional<double> NumberOf(std::string_view text) {
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  return number;
}

std::optional<std::size_t> CountOf(std::string_view text) {
  std::size_t count = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
  if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  return count;
}

bool IsOn(std::string_view text) {
  return text == "1" || text == "true";
}

/// "_x000D_" stands for a character that XML cannot hold.
std::string WithoutEscapes(const std::string& text) {
  constexpr std::size_t kLength = 7;
  std::string plain;
  for (std::size_t i = 0; i < text.size();) {
    unsigned code = 0;
    const char* const digits = text.data() + i + 2;
    const bool fits = text.size() - i >= kLength && text[i] == '_' && text[i + 1] == 'x' && text[i + 6] == '_';
    const bool is_escape = fits && std::from_chars(digits, digits + 4, code, 16).ptr == digits + 4;
    if (is_escape) {
      plain += EncodeUtf8(code);
      i += kLength;
    } else {
      plain += text[i++];
    }
  }
  return plain;
}

/// The text of an element that just started, that of its runs joined; how it is pronounced does not belong to it.
std::string TextInside(XmlInput& xml) {
  const std::string element(xml.Name());
  std::string text;
  bool in_text = false;
  int in_phonetic = 0;
  for (Step step = xml.Next(); step != Step::kDone; step = xml.Next()) {
    if (step == Step::kText) {
      if (in_text && in_phonetic == 0) text += xml.Text();
      continue;
    }
    const bool starts = step == Step::kStart;
    if (xml.Name() == "t") in_text = starts;
    if (xml.Name() == "rPh") in_phonetic += starts ? 1 : -1;
    if (!starts && xml.Name() == element) break;
  }
  return WithoutEscapes(text);
}

/// Where a relation of a part points to, from the root of the container.
std::string PathOfTarget(const std::string& folder, const std::string& target) {
  if (target.starts_with('/')) return target.substr(1);
  std::vector<std::string> steps = Split(folder, "/");
  for (const std::string& step : Split(target, "/")) {
    if (step == ".." && !steps.empty()) steps.pop_back();
    if (step != ".." && step != "." && !step.empty()) steps.push_back(step);
  }
  return Join(steps, "/");
}

struct Relation {
  std::string id;
  std::string type;  ///< its last word
  std::string path;
};

/// @param part empty for those of the container itself
std::vector<Relation> RelationsOf(const ZipFile& zip, const std::string& part) {
  const std::size_t slash = part.rfind('/');
  const std::string folder = slash == std::string::npos ? "" : part.substr(0, slash);
  const std::string name = slash == std::string::npos ? part : part.substr(slash + 1);
  const auto bytes = zip.Read((folder.empty() ? "" : folder + "/") + "_rels/" + name + ".rels");
  if (!bytes) throw DamagedWorkbook();
  std::vector<Relation> relations;
  XmlInput xml(*bytes);
  for (Step step = xml.Next(); step != Step::kDone; step = xml.Next()) {
    if (step != Step::kStart || xml.Name() != "Relationship") continue;
    Relation relation;
    xml.EachAttribute([&](std::string_view attribute, std::string_view value) {
      if (attribute == "Id") relation.id = value;
      if (attribute == "Type") relation.type = value.substr(value.rfind('/') + 1);
      if (attribute == "Target") relation.path = PathOfTarget(folder, std::string(value));
    });
    relations.push_back(std::move(relation));
  }
  return relations;
}

/// Which of the cell formats show dates.
std::vector<bool> ReadFormats(std::string_view bytes) {
  std::map<std::size_t, bool> own;
  std::vector<bool> is_date;
  bool in_cell_formats = false;
  XmlInput xml(bytes);
  for (Step step = xml.Next(); step != Step::kDone; step = xml.Next()) {
    if (step == Step::kText) continue;
    if (xml.Name() == "cellXfs") in_cell_formats = step == Step::kStart;
    if (step != Step::kStart) continue;
    if (xml.Name() == "numFmt") {
      const auto number = CountOf(xml.Attribute("numFmtId").value_or(""));
      if (number) own[*number] = IsDateFormat(xml.Attribute("formatCode").value_or(""));
    } else if (xml.Name() == "xf" && in_cell_formats) {
      const std::size_t number = CountOf(xml.Attribute("numFmtId").value_or("0")).value_or(0);
      const auto found = own.find(number);
      constexpr std::size_t kFirstOwn = 164;
      is_date.push_back(found != own.end() ? found->second
                                           : number < kFirstOwn && IsBuiltInDateFormat(static_cast<int>(number)));
    }
  }
  return is_date;
}

std::vector<std::string> ReadTexts(std::string_view bytes) {
  std::vector<std::string> texts;
  XmlInput xml(bytes);
  for (Step step = xml.Next(); step != Step::kDone; step = xml.Next()) {
    if (step == Step::kStart && xml.Name() == "si") texts.push_back(TextInside(xml));
  }
  return texts;
}

/// What the parts of a workbook have in common.
struct Commons {
  DateBase base = DateBase::k1900;
  std::vector<bool> is_date;
  std::vector<std::string> texts;
};

class CellsReader {
 public:
  CellsReader(const Commons& commons, std::string_view bytes) : commons_(commons), xml_(bytes) {}

  Recordset Read() {
    bool in_cells = false;
    for (Step step = xml_.Next(); step != Step::kDone; step = xml_.Next()) {
      if (step == Step::kText) continue;
      const bool starts = step == Step::kStart;
      if (xml_.Name() == "sheetData") in_cells = starts;
      if (!in_cells || !starts) continue;
      if (xml_.Name() == "row") StartRow();
      if (xml_.Name() == "c") TakeCell();
    }
    return cells_.TakeTable();
  }

 private:
  static constexpr std::size_t kMostRows = 1'048'576;
  static constexpr std::size_t kMostCols = 16'384;

  /// Rows and cells may leave out where they stand: behind the ones before.
  void StartRow() {
    const auto number = CountOf(xml_.Attribute("r").value_or(""));
    row_ = number && *number > 0 ? *number - 1 : next_row_;
    next_row_ = row_ + 1;
    next_col_ = 0;
    if (row_ >= kMostRows) throw DamagedWorkbook();
  }

  void TakeCell() {
    std::string kind;
    std::size_t format = 0;
    std::size_t col = next_col_;
    xml_.EachAttribute([&](std::string_view name, std::string_view value) {
      if (name == "t") kind = value;
      if (name == "s") format = CountOf(value).value_or(0);
      if (name != "r") return;
      const auto place = ParseAddress(value);
      if (!place) throw DamagedWorkbook();
      col = static_cast<std::size_t>(place->col) - 1;
      row_ = static_cast<std::size_t>(place->row) - 1;
    });
    next_col_ = col + 1;
    if (row_ >= kMostRows || col >= kMostCols) throw DamagedWorkbook();
    std::string text;
    bool in_value = false;
    for (Step step = xml_.Next(); step != Step::kDone; step = xml_.Next()) {
      if (step == Step::kText && in_value) text += xml_.Text();
      if (step == Step::kText) continue;
      const bool starts = step == Step::kStart;
      if (!starts && xml_.Name() == "c") break;
      if (xml_.Name() == "v") in_value = starts;
      if (starts && xml_.Name() == "is") text = TextInside(xml_);
    }
    cells_.Set(row_, col, ValueOf(kind, text, format));
  }

  Value ValueOf(const std::string& kind, const std::string& text, std::size_t format) const {
    if (text.empty() || kind == "e") return Value();
    if (kind == "s") {
      const auto number = CountOf(text);
      if (!number || *number >= commons_.texts.size()) throw DamagedWorkbook();
      return Value(commons_.texts[*number]);
    }
    if (kind == "str") return Value(WithoutEscapes(text));
    if (kind == "inlineStr") return Value(text);
    if (kind == "b") return Value(IsOn(text));
    if (kind == "d") return DayOf(text);
    const auto number = NumberOf(Trim(text));
    if (!number) throw DamagedWorkbook();
    const bool is_date = format < commons_.is_date.size() && commons_.is_date[format];
    return ValueOfNumber(*number, is_date, commons_.base);
  }

  /// "2026-03-01T08:05:00".
  static Value DayOf(const std::string& text) {
    const std::string plain = Replace(text.substr(0, text.find_first_of(".Z")), "T", " ");
    const auto moment = ParseDate(plain, DateTime());
    return moment ? Value(*moment) : Value(text);
  }

  const Commons& commons_;
  XmlInput xml_;
  SheetCells cells_;
  std::size_t row_ = 0;
  std::size_t next_row_ = 0;
  std::size_t next_col_ = 0;
};

class XlsxReader : public SheetReader {
 public:
  explicit XlsxReader(std::string bytes) : bytes_(std::move(bytes)), zip_(bytes_) {
    const std::vector<Relation> roots = RelationsOf(zip_, "");
    const auto root = std::ranges::find(roots, "officeDocument", &Relation::type);
    if (root == roots.end()) throw DamagedWorkbook();
    if (root->path.ends_with(".bin")) {
      throw UnreadableWorkbook("工作簿是二进制格式(xlsb)，无法读取。请在 Excel 中另存为 xlsx 格式后再试。");
    }
    ReadWorkbook(root->path);
  }

  std::vector<std::string> Names() const override {
    std::vector<std::string> names;
    for (const auto& [name, path] : sheets_) names.push_back(name);
    return names;
  }

  Recordset Read(std::string_view name) const override {
    const auto sheet = std::ranges::find(sheets_, name, &std::pair<std::string, std::string>::first);
    if (sheet == sheets_.end()) throw StandardFailure(failure::kSubscript);
    return CellsReader(commons_, Part(sheet->second)).Read();
  }

 private:
  std::string Part(const std::string& path) const {
    auto bytes = zip_.Read(path);
    if (!bytes) throw DamagedWorkbook();
    return std::move(*bytes);
  }

  void ReadWorkbook(const std::string& path) {
    const std::vector<Relation> relations = RelationsOf(zip_, path);
    const std::string bytes = Part(path);
    XmlInput xml(bytes);
    for (Step step = xml.Next(); step != Step::kDone; step = xml.Next()) {
      if (step != Step::kStart) continue;
      if (xml.Name() == "workbookPr" && IsOn(xml.Attribute("date1904").value_or(""))) commons_.base = DateBase::k1904;
      if (xml.Name() != "sheet") continue;
      const std::string id = xml.Attribute("id").value_or("");
      const auto relation = std::ranges::find(relations, id, &Relation::id);
      if (relation == relations.end()) throw DamagedWorkbook();
      if (relation->type == "worksheet") sheets_.emplace_back(xml.Attribute("name").value_or(""), relation->path);
    }
    for (const Relation& relation : relations) {
      if (relation.type == "styles") commons_.is_date = ReadFormats(Part(relation.path));
      if (relation.type == "sharedStrings") commons_.texts = ReadTexts(Part(relation.path));
    }
  }

  std::string bytes_;
  ZipFile zip_;
  Commons commons_;
  std::vector<std::pair<std::string, std::string>> sheets_;  ///< names and paths
};

}  // namespace

std::unique_ptr<SheetReader> ReadXlsx(std::string bytes) {
  return std::make_unique<XlsxReader>(std::move(bytes));
}

}  // namespace luming
