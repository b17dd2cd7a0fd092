// The plots' view: values under the pointer, wheel zoom and its reset, the context menu and
// the saved pictures.

#include <QChart>
#include <QScatterSeries>
#include <QValueAxis>

#include "gui/platform/chart_parts.h"
#include "gui/platform/plot_view.h"
#include "gui_fixture.h"

namespace ostrel::gui {
namespace {

TEST(PlotView, ToolTipZoomMenuAndPictures) {
    auto* chart = new QChart();
    QValueAxis* x = MakeAxis(chart, Qt::AlignBottom, "Wavelength [nm]", "%.0f");
    QValueAxis* y = MakeAxis(chart, Qt::AlignLeft, "dn [1e-6]", "%.1f");
    auto* points = new QScatterSeries(chart);
    points->append(587.56, 1.5);
    Attach(chart, points, x, y);
    x->setRange(400, 700);
    y->setRange(-2, 2);
    PlotView view(chart);
    view.resize(400, 300);
    view.grab();  // lays the chart out

    const QPoint at = view.mapFromScene(chart->mapToScene(chart->mapToPosition({587.56, 1.5})));
    EXPECT_EQ(view.ValuesAt(at + QPoint(2, 1)), "Wavelength [nm]: 587.56\ndn [1e-6]: 1.5");
    EXPECT_EQ(view.ValuesAt(QPoint(1, 1)), "") << "outside the plot area";

    view.ZoomAt(at, 2.0);
    EXPECT_NEAR(x->max() - x->min(), 150, 1);
    EXPECT_GT(x->max(), 587.56) << "the point under the pointer stays in view";
    QMenu* menu = view.MakeContextMenu();
    ASSERT_EQ(menu->actions().size(), 3);
    EXPECT_EQ(menu->actions()[0]->text(), "Reset zoom");
    EXPECT_TRUE(menu->actions()[0]->isEnabled());
    EXPECT_EQ(menu->actions()[2]->text(), "Save image...");
    menu->actions()[0]->trigger();
    EXPECT_DOUBLE_EQ(x->min(), 400);
    EXPECT_DOUBLE_EQ(x->max(), 700);

    ostrel::testing::TempDir dir;
    ASSERT_TRUE(view.SaveImage(QString::fromStdString((dir / "plot.png").string())));
    EXPECT_EQ(ostrel::testing::ReadFileBytes(dir / "plot.png").substr(1, 3), "PNG");
#ifdef OSTREL_HAVE_SVG
    ASSERT_TRUE(view.SaveImage(QString::fromStdString((dir / "plot.svg").string())));
    EXPECT_NE(ostrel::testing::ReadFileBytes(dir / "plot.svg").find("<svg"), std::string::npos);
#endif
}

TEST(ChartParts, StepLabelsShowTheStepsDecimalsOnly) {
    QValueAxis axis;
    const std::pair<double, const char*> cases[] = {{50, "%.0f"},  {1, "%.0f"},    {0.5, "%.1f"},
                                                    {0.2, "%.1f"}, {0.05, "%.2f"}, {0.001, "%.3f"}};
    for (const auto& [step, format] : cases) {
        SetStepLabels(&axis, step);
        EXPECT_EQ(axis.labelFormat(), format) << step;
    }
}

}  // namespace
}  // namespace ostrel::gui
