#include "testing/Variables.h"

#include "guidance/TreeForm.h"
#include "runtime/Form.h"
#include "wizard/Globals.h"

#include <functional>
#include <map>

namespace wizard {
namespace {

struct Var {
    std::function<QVariant(int)> get;
    std::function<bool(int, const QVariant&)> set;
    bool indexed;
};

template <class T> Var scalar(T& v) {
    return {[&v](int) { return QVariant::fromValue(v); },
            [&v](int, const QVariant& x) {
                v = static_cast<T>(x.toLongLong());
                return true;
            },
            false};
}

const std::map<QString, Var>& vars() {
    static const std::map<QString, Var> table = [] {
        using namespace Globals;
        std::map<QString, Var> t;
        t["Globals.CurrentFrame"] = scalar(CurrentFrame);
        t["Globals.PreviousFrame"] = scalar(PreviousFrame);
        t["Globals.CurrentIndex"] = scalar(CurrentIndex);
        t["Globals.CurrentPlayerDeck"] = scalar(CurrentPlayerDeck);
        t["Globals.IsCommonDeck"] = scalar(IsCommonDeck);
        t["Globals.CardCounter"] = scalar(CardCounter);
        t["Globals.TreeFrame"] = scalar(TreeFrame);
        t["Globals.TreeIndex1"] = scalar(TreeIndex1);
        t["Globals.TreeIndex2"] = scalar(TreeIndex2);
        t["HelpMgmt.HelpVisible"] = scalar(HelpMgmt::HelpVisible);
        t["HelpMgmt.TipsClicks"] = scalar(HelpMgmt::TipsClicks);
        t["Globals.SelectedImage"] = {[](int) { return QVariant(SelectedImage); },
                                      [](int, const QVariant& x) {
                                          SelectedImage = x.toString();
                                          return true;
                                      },
                                      false};
        t["Globals.CardProps"] = {[](int i) { return QVariant(i >= 0 ? cardProp(i) : QString()); },
                                  [](int i, const QVariant& x) {
                                      if (i < 0)
                                          return false;
                                      cardProp(i) = x.toString();
                                      return true;
                                  },
                                  true};
        t["HelpMgmt.HelpLines"] = {[](int i) {
                                       return QVariant(i >= 0 && i < HelpMgmt::HelpLines.size()
                                                           ? HelpMgmt::HelpLines.at(i)
                                                           : QString());
                                   },
                                   [](int i, const QVariant& x) {
                                       if (i < 0)
                                           return false;
                                       while (HelpMgmt::HelpLines.size() <= i)
                                           HelpMgmt::HelpLines.append(QString());
                                       HelpMgmt::HelpLines[i] = x.toString();
                                       return true;
                                   },
                                   true};
        t["HelpMgmt.HelpLines.Count"] = {
            [](int) { return QVariant(static_cast<int>(HelpMgmt::HelpLines.size())); },
            [](int, const QVariant&) { return false; }, false};
        return t;
    }();
    return table;
}

// The index's count of rows that lead past a page, while the index is up.
TreeForm* treeForm() {
    return rt::loaded<TreeForm>();
}

const QString kTreeRefCount = QStringLiteral("TreeForm.TreeRefCount");

} // namespace

bool isVariableName(const QString& name) {
    return vars().count(name) > 0 || name == kTreeRefCount;
}

bool readVariable(const QString& name, int index, QVariant& out) {
    auto it = vars().find(name);
    if (it != vars().end()) {
        if (it->second.indexed != (index >= 0))
            return false;
        out = it->second.get(index);
        return true;
    }
    if (name == kTreeRefCount && index < 0 && treeForm()) {
        out = static_cast<int>(treeForm()->TreeRefCount);
        return true;
    }
    return false;
}

bool writeVariable(const QString& name, int index, const QVariant& value) {
    auto it = vars().find(name);
    if (it != vars().end()) {
        if (it->second.indexed != (index >= 0))
            return false;
        return it->second.set(index, value);
    }
    (void)value; // the index's count is the index's own to keep
    return false;
}

} // namespace wizard
