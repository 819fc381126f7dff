#include "doctor/report.h"

#include "doctor/page.h"
#include "doctor/report_sections.h"

namespace halvane {
namespace {

void describeSandbox(const Examination& examination, Page& page) {
  if (examination.notRefused.empty()) return;
  page.heading("What the sandbox does not refuse here");
  page.line(examination.notRefused);
}

}  // namespace

Report reportOn(const Examination& examination, bool colour) {
  Page page(colour);
  page.heading("halvane_doctor " HALVANE_VERSION);
  describeLocation(examination, page);
  describeContent(examination, page);
  describeDates(page);
  describeTags(examination, page);
  describeSandbox(examination, page);
  page.verdict();
  return {page.text(), page.isWell()};
}

}  // namespace halvane
