#include "documents/batch_choice.h"

#include "frame/gateway.h"

namespace luming {

BatchChoice::BatchChoice(Form* form, AppContext& app, const BatchHabits& habits)
    : PH(form, "PH", "批  号", {.style = ComboStyle::kFixed}),
      XQ(form, "XQ"),
      PFJ(form, "PFJ"),
      app_(app),
      habits_(habits) {
  PH.click.Connect(this, &BatchChoice::PH_Click);
}

void BatchChoice::Offer(const std::string& code) {
  OpenRs(app_, batches_, "Exec YK_GetPH " + Quoted(code));
  if (batches_.RecordCount() == 0) return;
  XQ.SetCaption(batches_.Field("XQ").Format("YYYY-MM-DD"));
  PFJ.SetCaption(batches_.Field("PFJ").Format(habits_.first_price));
  for (; !batches_.Eof(); batches_.MoveNext()) PH.AddItem(batches_.Field("PH").TextOrEmpty());
}

void BatchChoice::PH_Click() {
  if (PH.ListIndex() < 0) return;
  batches_.MoveFirst();
  for (int row = 0; row < PH.ListIndex(); ++row) batches_.MoveNext();
  XQ.SetCaption(batches_.Field("XQ").Format("YYYY-MM-DD"));
  PFJ.SetCaption(batches_.Field("PFJ").Format(habits_.chosen_price));
}

}  // namespace luming
