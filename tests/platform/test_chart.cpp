// The chart widget's grid of values and its style switch and resize rules.
#include "platform/Chart.h"
#include "platform/ChartStyle.h"
#include "platform/Failure.h"

#include <QAreaSeries>
#include <QChart>
#include <QLineSeries>
#include <QCoreApplication>
#include <QGraphicsScene>
#include <QGraphicsTextItem>
#include <QImage>
#include <QRadioButton>
#include <QTest>

#include <gtest/gtest.h>

using platform::Chart;

TEST(Chart, GridOfTextsWithRowsColumnsAndLabels)
{
    Chart c;
    c.ChartData(QVector<QVariant>{163.5, 10, QString("3"), QString()});
    EXPECT_EQ(c.ColumnCount(), 4);
    EXPECT_EQ(c.DataAt(1, 1), "163,5");
    EXPECT_EQ(c.DataAt(1, 4), ""); // no value
    EXPECT_THROW(c.SetRow(2), platform::IndexOutOfRange);

    c.ChartData(QVector<QVector<QVariant>>{{1, 2}, {3, 4}, {5, -6}});
    EXPECT_EQ(c.RowCount(), 3);
    c.SetRow(3);
    c.SetColumn(2);
    EXPECT_EQ(c.Data(), "-6");
    c.SetData("");
    EXPECT_EQ(c.DataAt(3, 2), "");
    c.SetRowCount(5);
    EXPECT_EQ(c.RowCount(), 5);
    EXPECT_EQ(c.DataAt(5, 1), "");

    // Every type draws from the same grid, and switching keeps the data;
    // shown and painted between switches (the old plot may still be painted once).
    c.resize(400, 300);
    c.show();
    for (int type : {14, 1, 0, 14, 3, 2, 5, 4, 16, 14}) {
        c.SetChartType(type);
        QCoreApplication::processEvents();
        EXPECT_EQ(c.ChartType(), type);
        EXPECT_FALSE(c.ChartItem()->series().isEmpty()) << type;
        EXPECT_EQ(c.DataAt(1, 2), "2");
    }
    // An area lies between the values and 0, a loss below it.
    c.SetRow(3);
    c.SetColumn(1);
    c.SetData("-5");
    c.SetChartType(Chart::Area2D);
    auto* area = qobject_cast<QAreaSeries*>(c.ChartItem()->series().value(0));
    ASSERT_NE(area, nullptr);
    ASSERT_NE(area->lowerSeries(), nullptr);
    EXPECT_EQ(area->lowerSeries()->points().value(2), QPointF(2, 0));
    EXPECT_EQ(area->upperSeries()->points().value(2), QPointF(2, -5));

    // Axis figures in Italian: x from -0.5 to 1.5 takes ticks at halves.
    c.ChartData(QVector<QVector<QVariant>>{{-0.5, 20}, {1.5, 33.33}});
    c.SetChartType(Chart::XY2D);
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // the axes replaced
    QStringList figure;
    for (QGraphicsItem* item : c.ChartItem()->scene()->items())
        if (auto* text = qgraphicsitem_cast<QGraphicsTextItem*>(item))
            figure << text->toPlainText();
    EXPECT_TRUE(figure.contains("-0,5")) << figure.join(' ').toStdString();
    EXPECT_FALSE(figure.join(' ').contains('.')) << figure.join(' ').toStdString();

    // One point draws no line, so its marker must show it (a risk or draw-down frequency of one value).
    c.ChartData(QVector<QVector<QVariant>>{{2, 0}});
    c.SetChartType(Chart::XY2D);
    QCoreApplication::processEvents();
    const QImage plot = c.grab(c.ChartItem()->plotArea().toRect()).toImage();
    int colorati = 0;
    for (int y = 0; y < plot.height(); ++y)
        for (int x = 0; x < plot.width(); ++x)
            colorati += plot.pixelColor(x, y).hsvSaturation() > 120;
    EXPECT_GT(colorati, 10);
}

TEST(ChartStyle, SwitchSetsTheTypeOfEveryBoundChartAndRulesSizeTheChart)
{
    // The windows' captions come with and without the blank.
    EXPECT_EQ(platform::ChartTypeOf("Linee 3D"), 2);
    EXPECT_EQ(platform::ChartTypeOf("Area3D"), 4);
    Chart a, b;
    a.ChartData(QVector<QVariant>{1, 2});
    platform::ChartStyleSwitch sw({"Torta", "Barre", "Barre 3D"}, {&a, &b});
    QTest::mouseClick(sw.Button(0), Qt::LeftButton);
    EXPECT_EQ(a.ChartType(), 14);
    EXPECT_EQ(b.ChartType(), 14);
    QTest::mouseClick(sw.Button(2), Qt::LeftButton);
    EXPECT_EQ(b.ChartType(), 0);
    EXPECT_EQ(a.DataAt(1, 2), "2");

    // frmErrori's rule on a 900 x 600 form (10800 x 7200 twips).
    QWidget form;
    form.resize(900, 600);
    QWidget chart(&form);
    chart.setGeometry(0, 0, 10, 10);
    platform::ApplyChartResize(&form, &chart, nullptr, platform::ResizeRuleOf("msc_Errori"));
    EXPECT_EQ(chart.geometry(), QRect(platform::Twips(4760), 0, platform::Twips(10800 - 4600), platform::Twips(7200 - 400)));
}
