#pragma once
// The seven forms of the wizard as data.

#include "runtime/FormSpec.h"

namespace wizard {

const rt::FormSpec& mainFormSpec();
const rt::FormSpec& checkFormSpec();
const rt::FormSpec& cardDetailFormSpec();
const rt::FormSpec& advancedDeckPropFormSpec();
const rt::FormSpec& showCrdFormSpec();
const rt::FormSpec& treeFormSpec();
const rt::FormSpec& showImgListSpec();

// Registers every table above with the run time's catalogue.
void registerCatalogue();

} // namespace wizard
