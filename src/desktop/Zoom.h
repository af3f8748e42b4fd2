#pragma once
// The zoom's steps and the fit of a maximised window.

#include <QObject>

namespace desktop {

// The step after `now` in `direction` (+1 in, -1 out), or 1 for 0; the ends hold.
double nextZoom(double now, int direction);

// Watches the main form: while it is maximised and `fit` is on, the zoom
// fills the window; back to a normal window, the zoom from before returns.
class ZoomFit : public QObject {
public:
    using QObject::QObject;
    bool fit = true;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool m_fitting = false;
    double m_before = 1.0;
};

} // namespace desktop
