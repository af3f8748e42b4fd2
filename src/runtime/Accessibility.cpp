#include "runtime/Accessibility.h"

#include "runtime/Controls.h"
#include "runtime/Form.h"

#include <QLabel>
#include <algorithm>

namespace rt {
namespace {

// Two controls whose tops lie closer than this stand on one line of the page.
constexpr int LineTolerance = 180;
// A label further above a field than this belongs to something else.
constexpr int LabelAbove = 420;

bool isField(Kind kind) {
    return kind == Kind::TextBox || kind == Kind::ComboBox || kind == Kind::ListBox ||
           kind == Kind::FileListBox || kind == Kind::Table;
}

const Label* labelFor(const Control& field, const std::vector<std::unique_ptr<Control>>& all) {
    const QWidget* parent = field.widget()->parentWidget();
    const Label* best = nullptr;
    int bestDistance = 0;
    for (const auto& c : all) {
        if (c->kind() != Kind::Label || c->widget()->parentWidget() != parent)
            continue;
        const auto* label = static_cast<const Label*>(c.get());
        if (label->Caption().isEmpty())
            continue;
        int distance = -1;
        const bool sameLine = std::abs(label->Top() - field.Top()) < LineTolerance;
        if (sameLine && label->Left() + label->Width() <= field.Left() + LineTolerance)
            distance = std::max(0, field.Left() - (label->Left() + label->Width()));
        else if (label->Top() < field.Top() && field.Top() - label->Top() <= LabelAbove &&
                 std::abs(label->Left() - field.Left()) < LineTolerance)
            distance = field.Top() - label->Top() + 10000; // a label on the left wins
        if (distance >= 0 && (!best || distance < bestDistance)) {
            best = label;
            bestDistance = distance;
        }
    }
    return best;
}

// The control's place on the form: the outermost container it lies in (a
// page, the button bar), then its top and left on the form.
struct Place {
    QWidget* container;
    int order; // of the container, as the form lists it
    int top, left;
};

Place placeOf(const Control& c, const Form& form,
              const std::vector<std::unique_ptr<Control>>& all) {
    Place place{c.widget(), 0, c.Top(), c.Left()};
    for (QWidget* w = c.widget()->parentWidget(); w && w != &form && w != form.client();
         w = w->parentWidget()) {
        place.container = w;
        for (const auto& other : all) {
            if (other->widget() == w) {
                place.top += other->Top();
                place.left += other->Left();
                break;
            }
        }
    }
    for (size_t i = 0; i < all.size(); ++i)
        if (all[i]->widget() == place.container)
            place.order = static_cast<int>(i);
    return place;
}

QString containerCaption(const Control& c, const Form& form,
                         const std::vector<std::unique_ptr<Control>>& all) {
    for (QWidget* w = c.widget()->parentWidget(); w && w != &form && w != form.client();
         w = w->parentWidget())
        for (const auto& other : all)
            if (other->widget() == w && other->kind() == Kind::Frame)
                return static_cast<const Frame*>(other.get())->Caption();
    return form.Caption();
}

} // namespace

QString spokenCaption(const QString& caption) {
    QString out;
    for (qsizetype i = 0; i < caption.size(); ++i) {
        const QChar ch = caption.at(i);
        if (ch == QLatin1Char('&')) {
            if (i + 1 < caption.size() && caption.at(i + 1) == QLatin1Char('&'))
                out += caption.at(++i);
        } else if (ch == QLatin1Char('\r') || ch == QLatin1Char('\n')) {
            if (!out.endsWith(QLatin1Char(' ')))
                out += QLatin1Char(' ');
        } else {
            out += ch;
        }
    }
    return out.trimmed();
}

void captionChanged(Control& control, const QString& caption) {
    const QString name = spokenCaption(caption);
    control.widget()->setAccessibleName(name);
    // A label that names a field renames it when its text changes ("Cards: 3").
    if (auto* label = qobject_cast<QLabel*>(control.widget()))
        if (QWidget* field = label->buddy())
            field->setAccessibleName(name);
}

void describeForm(Form& form, const std::vector<std::unique_ptr<Control>>& controls) {
    for (const auto& c : controls) {
        if (!isField(c->kind()))
            continue;
        if (const Label* label = labelFor(*c, controls)) {
            c->widget()->setAccessibleName(spokenCaption(label->Caption()));
            if (auto* q = qobject_cast<QLabel*>(label->widget()))
                q->setBuddy(c->widget());
        } else {
            // A field alone in its frame or form goes by the frame's or the form's caption.
            c->widget()->setAccessibleName(spokenCaption(containerCaption(*c, form, controls)));
        }
    }

    struct Stop {
        Control* control;
        Place place;
    };
    std::vector<Stop> stops;
    for (const auto& c : controls)
        if (c->widget()->focusPolicy() & Qt::TabFocus)
            stops.push_back({c.get(), placeOf(*c, form, controls)});
    std::stable_sort(stops.begin(), stops.end(), [](const Stop& a, const Stop& b) {
        if (a.place.order != b.place.order)
            return a.place.order < b.place.order;
        return a.place.top < b.place.top;
    });
    // Within a container, controls whose tops differ by a little form one
    // line, read from left to right.
    for (size_t begin = 0; begin < stops.size();) {
        size_t end = begin + 1;
        while (end < stops.size() && stops[end].place.order == stops[begin].place.order &&
               stops[end].place.top - stops[begin].place.top < LineTolerance)
            ++end;
        std::stable_sort(stops.begin() + static_cast<std::ptrdiff_t>(begin),
                         stops.begin() + static_cast<std::ptrdiff_t>(end),
                         [](const Stop& a, const Stop& b) { return a.place.left < b.place.left; });
        begin = end;
    }
    for (size_t i = 1; i < stops.size(); ++i)
        QWidget::setTabOrder(stops[i - 1].control->widget(), stops[i].control->widget());
}

} // namespace rt
