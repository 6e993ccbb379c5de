#pragma once

#include "Job.h"
#include "records/MeasurementTable.h"

/// The job of reading the table of measurements from its file. Its peers come from several files,
/// since not every system has all of them.
inline Job<Measurement> csvReading("csv read");
