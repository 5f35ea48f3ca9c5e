/// \file
/// The whole public API of Varnel: `#include <varnel/varnel.h>`, link
/// `varnel::varnel` (CMake) or `pkg-config --cflags --libs varnel`.
#pragma once

#include "varnel/date_display.h"
#include "varnel/db.h"
#include "varnel/enums.h"
#include "varnel/errors.h"
#include "varnel/events.h"
#include "varnel/fields.h"
#include "varnel/messages.h"
#include "varnel/modules.h"
#include "varnel/recordset.h"
#include "varnel/row_observer.h"
#include "varnel/table_writer.h"
#include "varnel/variant.h"
