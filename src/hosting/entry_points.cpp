#include "ombrix/entry_points.h"

#include "hosting/shipped.h"

using ombrix::InstanceCount;
using ombrix::Shipped;

int32_t DllRegisterServer(void) {
  ombrix::enter_classes(true);
  return OMBRIX_OK;
}

int32_t DllUnregisterServer(void) {
  ombrix::enter_classes(false);
  return OMBRIX_OK;
}

int32_t DllGetClassObject(const char* class_name, const ombrix_class_factory** factory) {
  if (class_name == nullptr || factory == nullptr) return OMBRIX_POINTER;
  const Shipped* found = ombrix::find_shipped(class_name);
  const bool is_class = found != nullptr && found->role() == Shipped::Role::business_class;
  const ombrix::ClassFactory* made = is_class ? found : nullptr;
  *factory = reinterpret_cast<const ombrix_class_factory*>(made);
  return is_class ? OMBRIX_OK : OMBRIX_CLASS_NOT_AVAILABLE;
}

int32_t DllCanUnloadNow(void) {
  return InstanceCount::living() == 0 ? OMBRIX_OK : OMBRIX_FALSE;
}
