// frmMain: the file list's notifications.
#include "frmMain.h"
#include "ui/panel/WebPanel.h"
#include "ui/views/FileListView.h"

namespace zentoria {

void frmMain::LV_ItemClick() {
    pctWeb->ResetWebItems(true);
    // Enabling the timer again does not put the refresh off: clicks within its interval give one.
    pctWeb->scheduleRefresh();
}

} // namespace zentoria
