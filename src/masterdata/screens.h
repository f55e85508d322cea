#pragma once

#include "frame/screen.h"

namespace luming {

extern const Screen kCatalogueImport;
extern const Screen kChargeItems;
extern const Screen kDataDictionary;
extern const Screen kDictionaryHead;
extern const Screen kDictionaryLinks;
extern const Screen kDrugCatalogue;
extern const Screen kDrugChoice;
extern const Screen kDrugEditor;
extern const Screen kInsuranceItems;
extern const Screen kProducerChoice;
extern const Screen kProducerEditor;
extern const Screen kProducers;

}  // namespace luming
