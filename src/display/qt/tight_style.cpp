#include "display/qt/tight_style.h"

#include <QPainter>
#include <QStyleOption>

#include "display/qt/plates.h"

namespace keelview {

namespace {

constexpr int IndicatorSide = 12;
constexpr int LabelSpacing = 3;
constexpr int ButtonMargin = 2;
constexpr QColor Outline(110, 110, 110);
constexpr QColor FaintOutline(160, 160, 160);

}  // namespace

TightStyle::TightStyle() : QProxyStyle("fusion") {}

int TightStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    switch (metric) {
        case PM_IndicatorWidth:
        case PM_IndicatorHeight:
        case PM_ExclusiveIndicatorWidth:
        case PM_ExclusiveIndicatorHeight:
            return IndicatorSide;
        case PM_CheckBoxLabelSpacing:
        case PM_RadioButtonLabelSpacing:
            return LabelSpacing;
        case PM_ButtonMargin:
            return ButtonMargin;
        default:
            return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int TightStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                          QStyleHintReturn* result) const {
    if (hint == SH_Widget_Animation_Duration) return 0;
    if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;  // they crowd the words at our margins
    return QProxyStyle::styleHint(hint, option, widget, result);
}

void TightStyle::drawItemText(QPainter* painter, const QRect& rect, int flags, const QPalette& palette,
                              bool enabled, const QString& text, QPalette::ColorRole role) const {
    const int width = painter->fontMetrics().size(flags & Qt::TextShowMnemonic, text).width();
    DrawNarrowed(*painter, rect, width, [&](const QRectF& room) {
        const bool narrowed = room.width() > rect.width();
        const QRect wide(0, rect.top(), static_cast<int>(room.width()) + 1, rect.height());
        QProxyStyle::drawItemText(painter, narrowed ? wide : rect, flags, palette, enabled, text, role);
    });
}

void TightStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                               const QWidget* widget) const {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    const bool round = element == PE_IndicatorRadioButton;
    const bool line = element == PE_FrameLineEdit;
    if (!round && !line && element != PE_IndicatorCheckBox) return;
    // Stock Fusion takes its outline from a light ground and vanishes on the darker ones of our panels.
    if (option->state.testFlag(State_HasFocus) && line) return;
    painter->save();
    painter->setPen(option->state.testFlag(State_Enabled) ? Outline : FaintOutline);
    painter->setBrush(Qt::NoBrush);
    if (round) {
        painter->setRenderHint(QPainter::Antialiasing);
        painter->drawEllipse(QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5));
    } else {
        painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
    }
    painter->restore();
}

void TightStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                    QPainter* painter, const QWidget* widget) const {
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    // Stock Fusion does not show which scroll bar the arrow keys move.
    if (control != CC_ScrollBar || !option->state.testFlag(State_HasFocus)) return;
    painter->save();
    painter->setPen(option->palette.color(QPalette::Highlight));
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
    painter->restore();
}

}  // namespace keelview
