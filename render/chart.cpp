#include "render/chart.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <memory>
#include <stdexcept>
#include <vtkAxis.h>
#include <vtkBrush.h>
#include <vtkChartLegend.h>
#include <vtkChartXY.h>
#include <vtkContextActor.h>
#include <vtkContextScene.h>
#include <vtkDoubleArray.h>
#include <vtkNew.h>
#include <vtkPen.h>
#include <vtkPlot.h>
#include <vtkPlotPoints.h>
#include <vtkRect.h>
#include <vtkRenderWindow.h>
#include <vtkRenderer.h>
#include <vtkSVGExporter.h>
#include <vtkSmartPointer.h>
#include <vtkStringArray.h>
#include <vtkTable.h>
#include <vtkTextProperty.h>

#include "render/offscreen_window.h"
#include "render/picture.h"
#include "render/text.h"
#include "render/ticks.h"

namespace render {
namespace {

// Sizes in pixels of the picture.
constexpr double kTitleSize = 20;
constexpr double kTextSize = 15;
constexpr double kMargin = 8;  // around everything
constexpr double kTickLength = 2.5;
constexpr int kSymbolWidth = 30;  // of the legend
constexpr float kLineWidth = 2;
constexpr float kMarkSize = 7;
constexpr std::size_t kMostMarks = 60;  // points of a line that are marked one by one

// Told apart by people with colour vision deficiency too.
using Bytes = std::array<unsigned char, 3>;
constexpr std::array<Bytes, 7> kSeriesColours = {{{0, 114, 178},
                                                  {213, 94, 0},
                                                  {0, 158, 115},
                                                  {204, 121, 167},
                                                  {230, 159, 0},
                                                  {86, 180, 233},
                                                  {60, 60, 60}}};
constexpr std::array<int, 4> kLineTypes = {vtkPen::SOLID_LINE, vtkPen::DASH_LINE, vtkPen::DOT_LINE,
                                           vtkPen::DASH_DOT_LINE};

// Two columns of a table.
vtkSmartPointer<vtkTable> make_table(const ChartSeries& series) {
  auto table = vtkSmartPointer<vtkTable>::New();
  const auto add = [&](const char* name, const std::vector<double>& values) {
    vtkNew<vtkDoubleArray> column;
    column->SetName(name);
    for (const double value : values) column->InsertNextValue(value);
    table->AddColumn(column);
  };
  add("x", series.x);
  add(series.name.empty() ? " " : series.name.c_str(), series.y);
  return table;
}

// Writes texts in the sizes of a window that is `scale` times as large as the picture.
struct Texts {
  std::string font;
  double scale = 1;

  void set(vtkTextProperty* property, double size) const {
    set_text(property, {font, {0.1, 0.1, 0.1}}, size * scale / kSupersampling);
  }
};

void set_axis(vtkAxis* axis, const std::string& title, const Texts& texts) {
  axis->SetTitle(title);
  texts.set(axis->GetTitleProperties(), kTextSize);
  texts.set(axis->GetLabelProperties(), kTextSize);
  axis->GetGridPen()->SetColor(225, 225, 225);
  axis->GetPen()->SetWidth(static_cast<float>(texts.scale));
  axis->SetTickLength(static_cast<float>(kTickLength * texts.scale));
  // Leaves room for the title, which VTK puts 10 pixels beyond the width of the labels, whatever the scale.
  axis->SetLabelOffset(8);
  axis->SetNotation(vtkAxis::STANDARD_NOTATION);
  axis->SetPrecision(6);
}

// Fixes the ends of an axis, with ticks at round numbers.
void set_range(vtkAxis* axis, double low, double high) {
  axis->SetUnscaledRange(low, high);
  axis->SetBehavior(vtkAxis::FIXED);
  constexpr int kMostTicks = 11;
  vtkNew<vtkDoubleArray> positions;
  vtkNew<vtkStringArray> labels;
  for (const Tick& tick : make_ticks(low, high, kMostTicks)) {
    positions->InsertNextValue(tick.value);
    labels->InsertNextValue(tick.label);
  }
  axis->SetCustomTickPositions(positions, labels);
}

// The range of finite values, never empty.
std::array<double, 2> range_of(const Chart& chart, const std::vector<double> ChartSeries::*values) {
  double low = std::numeric_limits<double>::infinity();
  double high = -low;
  for (const ChartSeries& series : chart.series) {
    for (const double value : series.*values) {
      if (!std::isfinite(value)) continue;
      low = std::min(low, value);
      high = std::max(high, value);
    }
  }
  if (low > high) return {0, 1};
  if (low < high) return {low, high};
  const double margin = low == 0 ? 0.5 : std::abs(low) / 10;
  return {low - margin, high + margin};
}

void add_plot(vtkChartXY* chart, const Chart& from, std::size_t number, const Texts& texts) {
  const ChartSeries& series = from.series[number];
  if (series.x.empty()) return;
  vtkPlot* plot = chart->AddPlot(from.kind == ChartKind::bars ? vtkChart::BAR : vtkChart::LINE);
  plot->SetInputData(make_table(series), 0, 1);
  plot->SetLabel(series.name);
  const Bytes& colour = kSeriesColours[number % kSeriesColours.size()];
  plot->SetColor(colour[0], colour[1], colour[2], 255);
  if (from.kind == ChartKind::bars) {
    plot->GetPen()->SetColor(255, 255, 255);
    return;
  }
  plot->SetWidth(static_cast<float>(kLineWidth * texts.scale));
  plot->GetPen()->SetLineType(kLineTypes[number / kSeriesColours.size() % kLineTypes.size()]);
  if (series.x.size() > kMostMarks) return;
  auto* points = vtkPlotPoints::SafeDownCast(plot);
  points->SetMarkerStyle(vtkPlotPoints::CIRCLE);
  points->SetMarkerSize(static_cast<float>(kMarkSize * texts.scale));
}

vtkSmartPointer<vtkChartXY> make_chart(const Chart& from, const Texts& texts) {
  auto chart = vtkSmartPointer<vtkChartXY>::New();
  chart->SetTitle(from.title);
  texts.set(chart->GetTitleProperties(), kTitleSize);
  set_axis(chart->GetAxis(vtkAxis::BOTTOM), from.x_title, texts);
  set_axis(chart->GetAxis(vtkAxis::LEFT), from.y_title, texts);
  for (std::size_t i = 0; i < from.series.size(); ++i) add_plot(chart, from, i, texts);
  chart->SetShowLegend(from.series.size() > 1);
  vtkChartLegend* legend = chart->GetLegend();
  texts.set(legend->GetLabelProperties(), kTextSize);
  legend->SetLabelSize(static_cast<int>(std::lround(kTextSize * texts.scale)));
  legend->GetPen()->SetColor(200, 200, 200);
  legend->GetBrush()->SetColor(255, 255, 255, 220);
  legend->SetPadding(static_cast<int>(8 * texts.scale));
  legend->SetSymbolWidth(static_cast<int>(kSymbolWidth * texts.scale));
  legend->SetHorizontalAlignment(vtkChartLegend::RIGHT);
  legend->SetVerticalAlignment(vtkChartLegend::TOP);
  // Room for the last labels, at the side and at the top that have no axis.
  chart->SetHiddenAxisBorder(static_cast<int>(24 * texts.scale));
  if (from.kind == ChartKind::lines) {
    // With some room around the lines, and for the legend above them.
    const auto [left, right] = range_of(from, &ChartSeries::x);
    const auto [low, high] = range_of(from, &ChartSeries::y);
    constexpr double kRoom = 0.05;
    const double entries = from.series.size() > 1 ? static_cast<double>(from.series.size()) : 0;
    const double above = std::min(kRoom + kRoom * entries, 0.3);
    set_range(chart->GetAxis(vtkAxis::BOTTOM), left - kRoom / 2 * (right - left),
              right + kRoom / 2 * (right - left));
    set_range(chart->GetAxis(vtkAxis::LEFT), low - kRoom * (high - low), high + above * (high - low));
  }
  return chart;
}

// A window with the chart in it, as large as `scale` times the picture.
struct ChartWindow {
  ChartWindow(const Chart& from, const ChartOptions& options, int scale)
      : offscreen(make_offscreen_window(scale * options.width, scale * options.height)) {
    chart = make_chart(from, {options.font, static_cast<double>(scale)});
    const auto margin = static_cast<float>(kMargin * scale);
    chart->SetAutoSize(false);
    chart->SetSize({margin, margin, static_cast<float>(scale * options.width) - 2 * margin,
                    static_cast<float>(scale * options.height) - 2 * margin});
    vtkNew<vtkContextActor> actor;
    actor->GetScene()->AddItem(chart);
    actor->GetScene()->SetRenderer(renderer);
    renderer->AddActor(actor);
    renderer->SetBackground(1, 1, 1);
    window().SetMultiSamples(0);
    window().AddRenderer(renderer);
  }
  ChartWindow(const ChartWindow&) = delete;
  ChartWindow& operator=(const ChartWindow&) = delete;
  ~ChartWindow() { window().RemoveRenderer(renderer); }

  vtkRenderWindow& window() const { return offscreen->window(); }

  std::unique_ptr<OffscreenWindow> offscreen;
  vtkSmartPointer<vtkChartXY> chart;
  vtkNew<vtkRenderer> renderer;
};

// A folder of its own for the file that VTK's exporter writes.
class ExportFolder {
 public:
  ExportFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "fldtool-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("cannot make a temporary folder");
    path_ = pattern;
  }
  ExportFolder(const ExportFolder&) = delete;
  ExportFolder& operator=(const ExportFolder&) = delete;
  ~ExportFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace

std::string chart_texts(const Chart& chart) {
  std::string texts = chart.title + chart.x_title + chart.y_title;
  for (const ChartSeries& series : chart.series) texts += series.name;
  return texts;
}

std::string chart_png(const Chart& chart, const ChartOptions& options) {
  const ChartWindow shown(chart, options, kSupersampling);
  shown.window().Render();
  return take_picture(shown.window());
}

std::string chart_svg(const Chart& chart, const ChartOptions& options) {
  const ChartWindow shown(chart, options, 1);
  shown.window().Render();
  const ExportFolder folder;
  const std::string path = (folder.path() / "chart.svg").string();
  vtkNew<vtkSVGExporter> exporter;
  exporter->SetRenderWindow(&shown.window());
  exporter->SetActiveRenderer(shown.renderer);
  exporter->SetTitle(chart.title.c_str());
  exporter->SetFileName(path.c_str());
  exporter->Write();
  std::ifstream file(path, std::ios::binary);
  std::string text{std::istreambuf_iterator<char>(file), {}};
  if (text.empty()) throw std::runtime_error("cannot write " + path);
  return text;
}

}  // namespace render
