#include "mainwindow/reading.h"

#include <utility>

namespace {

using std::chrono::milliseconds;

/// What takes no longer shows nothing of itself.
constexpr milliseconds kMoment{500};
constexpr milliseconds kBetweenPercents{100};

}  // namespace

Reading::Reading(forms::Form& form, platform::Clock& clock, forms::TextBox& shownIn,
                 std::vector<forms::Control*> waiting, int passes)
    : busy_(form),
      form_(form),
      clock_(clock),
      shownIn_(shownIn),
      waiting_(std::move(waiting)),
      passes_(passes),
      showNext_(clock.Now() + kMoment) {}

Reading::~Reading() {
  if (!taskbar_) return;
  shownIn_.SetText(formerText_);
  for (forms::Control* control : waiting_) control->SetEnabled(true);
  if (formerFocus_) formerFocus_->SetFocus();
}

Pacer Reading::NextPass() {
  ++pass_;
  return Pacer(clock_,
               [this](std::int32_t done, std::int32_t total) { return Breathe(done, total); });
}

bool Reading::Breathe(std::int32_t done, std::int32_t total) {
  if (clock_.Now() >= showNext_) {
    ShowPercent(static_cast<int>(100 * (pass_ - 1 + static_cast<double>(done) / total) / passes_));
    showNext_ = clock_.Now() + kBetweenPercents;
  }
  return busy_.GoOn();
}

void Reading::Appear() {
  taskbar_.emplace(form_.window());
  formerText_ = shownIn_.Text();
  formerFocus_ = form_.FocusedControl();
  for (forms::Control* control : waiting_) control->SetEnabled(false);
}

void Reading::ShowPercent(int percent) {
  if (percent == percent_) return;
  if (!taskbar_) Appear();
  percent_ = percent;
  shownIn_.SetText("Reading ... " + std::to_string(percent) + "% (Esc stops)");
  taskbar_->SetValue(percent);
}
