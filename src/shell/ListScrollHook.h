#pragma once

#include <functional>

class QAbstractScrollArea;
class QWidget;

namespace zentoria {

// Brings the list, then the panel, then the panel's scroll bar to the front: whatever order other code
// left them in, the scroll bar ends on top of the panel, and the panel on top of the list.
void RestorePanelOrder(QWidget* list, QWidget* panel, QWidget* scrollBar);

// Watches a list's vertical scrolling (the wheel, its scroll bar's arrows, track and thumb, and the keys
// that scroll it) and calls beforeScroll each time, before the list scrolls; horizontal scrolling is
// left alone. One list at a time can carry the hook: hooking another replaces it.
void HookWindow(QAbstractScrollArea* list, std::function<void()> beforeScroll);
// Removes the hook from the list, which must still exist.
void UnhookWindow(QAbstractScrollArea* list);
// Whether the list carries the hook.
bool isHooked(const QAbstractScrollArea* list);

} // namespace zentoria
