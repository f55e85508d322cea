#pragma once

#include <QFont>
#include <map>
#include <string>
#include <tuple>
#include <unordered_map>

#include "platform/page_plan.h"

class QPainter;

namespace luming {

/// The room that text takes in the fonts of this machine.
class FontTextMetrics : public TextMetrics {
 public:
  double Advance(char32_t character, const PrintFont& font) const override;
  double LineHeight(const PrintFont& font) const override;

 private:
  struct Measured {
    std::unordered_map<char32_t, double> advances;
    double line_height = 0;
    double ideograph = 0;
  };
  Measured& Of(const PrintFont& font) const;
  mutable std::map<std::tuple<std::string, double, bool>, Measured> fonts_;
  mutable PrintFont last_font_;
  mutable Measured* last_ = nullptr;  ///< of last_font_: one font measures many characters in turn
};

/// Paints a page. The painter's unit is a point, its origin the paper's upper left corner.
/// @param metrics those that the plan was made with
void PaintPage(QPainter& painter, const PrintJob& job, const PagePlan& plan, int page, const FontTextMetrics& metrics);

}  // namespace luming
