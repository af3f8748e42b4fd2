// Zoom of the main form: text, lists and pictures grow together, by steps, and
// a maximised window can take the zoom that fills it.

#include "desktop/Zoom.h"
#include "desktop/Desktop.h"

#include "runtime/Runtime.h"
#include "wizard/MainForm.h"

#include <QEvent>
#include <QScreen>
#include <QWindowStateChangeEvent>

#include <algorithm>
#include <array>
#include <cmath>

namespace desktop {
namespace {

constexpr std::array<double, 13> Steps = {0.5,  0.67, 0.75, 0.8, 0.9, 1.0, 1.1,
                                          1.25, 1.5,  1.75, 2.0, 2.5, 3.0};

} // namespace

double nextZoom(double now, int direction) {
    if (direction == 0)
        return 1.0;
    if (direction > 0) {
        for (double s : Steps)
            if (s > now + 1e-6)
                return s;
        return Steps.back();
    }
    for (auto it = Steps.rbegin(); it != Steps.rend(); ++it)
        if (*it < now - 1e-6)
            return *it;
    return Steps.front();
}

void zoomStep(MainForm* form, int direction) {
    if (!form)
        return;
    const double next = nextZoom(form->zoom(), direction);
    // The pages must still fit where they are drawn, or their buttons go off
    // the edge: a window grows as far as the screen lets it, a maximised one
    // keeps its size.
    const QScreen* screen = form->screen();
    if (next > form->zoom() && screen) {
        const QSize design = form->designClientPixels();
        const int bars = form->height() - qRound(design.height() * form->zoom());
        const bool filling = form->isMaximized() || form->isFullScreen();
        const QSize outside =
            filling ? QSize(0, bars) : form->frameGeometry().size() - form->size() + QSize(0, bars);
        const QSize room = filling ? form->size() : screen->availableGeometry().size();
        // A maximised window is larger than the pages: only they must fit.
        const QSize pages = filling ? QSize(rt::toPixels(form->spec().clientWidth),
                                            rt::toPixels(form->spec().clientHeight))
                                    : design;
        const QSize need(qRound(pages.width() * next) + outside.width(),
                         qRound(pages.height() * next) + outside.height());
        if (need.width() > room.width() || need.height() > room.height())
            return;
    }
    form->setZoom(next);
}

bool ZoomFit::eventFilter(QObject* watched, QEvent* event) {
    auto* form = qobject_cast<MainForm*>(watched);
    if (!form || (event->type() != QEvent::Resize && event->type() != QEvent::WindowStateChange))
        return false;
    const bool filling = form->isMaximized() || form->isFullScreen();
    if (filling && fit) {
        if (!m_fitting) {
            m_fitting = true;
            m_before = form->zoom();
        }
        const QSize design(rt::toPixels(form->spec().clientWidth),
                           rt::toPixels(form->spec().clientHeight));
        const QSize now = form->designClientPixels();
        const QSize room(qRound(now.width() * form->zoom()), qRound(now.height() * form->zoom()));
        const double z = std::min(double(room.width()) / design.width(),
                                  double(room.height()) / design.height());
        // Whole hundredths, so that a pixel more or less of room changes nothing.
        form->setZoom(std::floor(z * 100.0) / 100.0);
    } else if (!filling && m_fitting && event->type() == QEvent::WindowStateChange) {
        m_fitting = false;
        form->setZoom(m_before);
    }
    return false;
}

} // namespace desktop
