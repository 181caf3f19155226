#pragma once

// All kinds of controls.
#include "forms/buttons.h"
#include "forms/combo_box.h"
#include "forms/labels.h"
#include "forms/month_calendar.h"
#include "forms/progress.h"
#include "forms/slider.h"
#include "forms/text_box.h"
#include "forms/timer.h"
