#pragma once

class QAbstractItemView;

namespace zentoria {

// Makes a view's selection show where the keyboard is: in full colour while the view has the focus,
// as a faint tint of it while another pane has it.
void showFocusClearly(QAbstractItemView* view);

} // namespace zentoria
