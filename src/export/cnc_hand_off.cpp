// The hand-over to a CNC run.
#include "export/cnc_hand_off.h"

#include "export/frm_export.h"
#include "session/message.h"

namespace brenvik {

void HandOffToCnc(frmExport& form, int) { ShowNotAvailable(form.cboExportType.Text()); }

}  // namespace brenvik
