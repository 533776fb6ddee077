// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/chart/ChartAccessible.h"

#include "platform/chart/ChartView.h"

#include <QAccessibleWidget>

namespace chart
{

namespace
{

/// The name contains the current point, since a changed name is what screen readers announce.
class ChartAccessible : public QAccessibleWidget
{
public:
    explicit ChartAccessible(ChartView *view) : QAccessibleWidget(view, QAccessible::Chart) {}

    QString text(QAccessible::Text kind) const override
    {
        const auto current = view().currentPoint();
        QString point = current ? view().pointText(*current) : QString();
        QString own = QAccessibleWidget::text(kind);
        if (kind == QAccessible::Value) {
            return point;
        }
        if (kind != QAccessible::Name || point.isEmpty()) {
            return own;
        }
        return own.isEmpty() ? point : QStringLiteral("%1, %2").arg(own, point);
    }

private:
    ChartView &view() const { return *static_cast<ChartView *>(widget()); }
};

QAccessibleInterface *makeChartAccessible(const QString &className, QObject *object)
{
    auto *view = className == QLatin1String("chart::ChartView") ? qobject_cast<ChartView *>(object) : nullptr;
    return view ? new ChartAccessible(view) : nullptr;
}

} // namespace

void installChartAccessibility()
{
    static const bool installed = [] {
        QAccessible::installFactory(makeChartAccessible);
        return true;
    }();
    Q_UNUSED(installed)
}

} // namespace chart
