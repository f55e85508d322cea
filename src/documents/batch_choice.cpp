#include "documents/batch_choice.h"

#include <algorithm>

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
  if (habits_.first_chosen) PH.SetListIndex(0);
}

void BatchChoice::PH_Click() {
  if (PH.ListIndex() < 0) return;
  // Of several of one name it is the first: nothing else of a batch goes into the line.
  const auto first = std::ranges::find(PH.Items(), PH.Text()) - PH.Items().begin();
  batches_.MoveFirst();
  for (auto row = first; row > 0; --row) batches_.MoveNext();
  XQ.SetCaption(batches_.Field("XQ").Format("YYYY-MM-DD"));
  const Value& price = batches_.Field("PFJ");
  if (!habits_.keeps_price || !price.IsNull()) PFJ.SetCaption(price.Format(habits_.chosen_price));
}

}  // namespace luming
