// The form's lengths as the program reads and assigns them, in twips of the
// design, and the window around them: the bars above and below the controls'
// area and the zoom it is drawn at.

#include "runtime/Form.h"

#include "runtime/Runtime.h"

#include <algorithm>
#include <cmath>

namespace rt {

// A size assigned in twips reads back as assigned while the window has it.
// The bars and the zoom are the window's, not the form's: lengths leave them out.
QSize Form::designClientPixels() const {
    // A window drawn at a zoom is whole pixels; the size it was made from
    // stands while the window is within a pixel of it.
    auto design = [this](int shown, int twips) {
        const double exact = shown / m_zoom;
        const int assigned = toPixels(twips);
        return std::abs(exact - assigned) <= 1.0 / m_zoom ? assigned : qRound(exact);
    };
    return QSize(design(width(), m_clientWidth), design(height() - barsHeight(), m_clientHeight));
}

int Form::Width() const {
    const int px = frameGeometry().width() - width() + designClientPixels().width();
    return m_width >= 0 && toPixels(m_width) == px ? m_width : toTwips(px);
}
int Form::Height() const {
    const int px = frameGeometry().height() - height() + designClientPixels().height();
    return m_height >= 0 && toPixels(m_height) == px ? m_height : toTwips(px);
}
int Form::Left() const {
    return toTwips(frameGeometry().x());
}
int Form::Top() const {
    return toTwips(frameGeometry().y());
}

void Form::setWidth(int twips) {
    m_width = twips;
    const int frame = frameGeometry().width() - width();
    const int px = std::max(1, toPixels(twips) - frame);
    m_clientWidth = toTwips(px);
    const int inner = std::max(1, qRound(px * m_zoom));
    if (m_spec.border == Border::FixedToolWindow)
        setFixedWidth(inner);
    else
        resize(inner, height());
}

void Form::setHeight(int twips) {
    m_height = twips;
    const int frame = frameGeometry().height() - height();
    const int px = std::max(1, toPixels(twips) - frame);
    m_clientHeight = toTwips(px);
    const int inner = std::max(1, qRound(px * m_zoom)) + barsHeight();
    if (m_spec.border == Border::FixedToolWindow)
        setFixedHeight(inner);
    else
        resize(width(), inner);
}

int Form::ScaleWidth() const {
    const int px = designClientPixels().width();
    return toPixels(m_clientWidth) == px ? m_clientWidth : toTwips(px);
}

int Form::ScaleHeight() const {
    const int px = designClientPixels().height();
    return toPixels(m_clientHeight) == px ? m_clientHeight : toTwips(px);
}

static int barHeight(const QWidget* bar) {
    return bar ? std::max(bar->sizeHint().height(), bar->minimumHeight()) : 0;
}

int Form::barsHeight() const {
    return barHeight(m_topBar) + barHeight(m_bottomBar);
}

void Form::layoutBars() {
    const int top = barHeight(m_topBar);
    const int bottom = barHeight(m_bottomBar);
    if (m_topBar)
        m_topBar->setGeometry(0, 0, width(), top);
    if (m_bottomBar)
        m_bottomBar->setGeometry(0, height() - bottom, width(), bottom);
    m_client->setGeometry(0, top, width(), std::max(0, height() - top - bottom));
}

void Form::setBars(QWidget* top, QWidget* bottom) {
    const QSize design = designClientPixels();
    m_topBar = top;
    m_bottomBar = bottom;
    for (QWidget* bar : {top, bottom})
        if (bar) {
            bar->setParent(this);
            bar->show();
        }
    resize(width(), qRound(design.height() * m_zoom) + barsHeight());
    layoutBars();
}

// A picture box draws its own lines at the zoom, from lengths at zoom 1.
void Form::applyFont(Control& c) {
    QFont font = m_fonts[&c];
    if (c.kind() != Kind::PictureBox)
        font.setPointSizeF(font.pointSizeF() * m_zoom);
    c.widget()->setFont(font);
}

void Form::setZoom(double zoom) {
    zoom = std::clamp(zoom, MinZoom, MaxZoom);
    if (qFuzzyCompare(zoom, m_zoom))
        return;
    const QSize design = designClientPixels();
    m_zoom = zoom;
    for (const auto& c : m_controls) {
        // A control the window has taken into one of its bars keeps its place there.
        if (!m_client->isAncestorOf(c->widget()))
            continue;
        applyFont(*c);
        c->applyGeometry();
        c->widget()->update();
    }
    if (!isMaximized() && !isFullScreen())
        resize(qRound(design.width() * zoom), qRound(design.height() * zoom) + barsHeight());
}

void Form::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    layoutBars();
}

} // namespace rt
