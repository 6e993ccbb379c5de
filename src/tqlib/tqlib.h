#pragma once

// Every public class of the library.

#include "tqlib/calc/TQHpBefehl.h"
#include "tqlib/calc/TQHpCalculator.h"
#include "tqlib/calc/TQHpList.h"
#include "tqlib/config/getLibrarySetting.h"
#include "tqlib/config/TQConfiguration.h"
#include "tqlib/datetime/CTQOleDateTime.h"
#include "tqlib/datetime/TQDate.h"
#include "tqlib/datetime/TQDateTime.h"
#include "tqlib/datetime/TQTime.h"
#include "tqlib/files/GetVersionInfo.h"
#include "tqlib/files/TQArgv.h"
#include "tqlib/files/TQExecute.h"
#include "tqlib/files/TQFilename.h"
#include "tqlib/files/TQLogfile.h"
#include "tqlib/foundation/TQException.h"
#include "tqlib/foundation/TQString.h"
#include "tqlib/records/TQCSVInput.h"
#include "tqlib/records/TQCSVOutput.h"
