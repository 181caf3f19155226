#pragma once

// All kinds of controls.
#include "forms/buttons.h"
#include "forms/displays.h"
#include "forms/month_calendar.h"
#include "forms/slider.h"
#include "forms/text_box.h"
