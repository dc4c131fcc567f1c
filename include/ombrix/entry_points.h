#ifndef OMBRIX_ENTRY_POINTS_H
#define OMBRIX_ENTRY_POINTS_H

#include <stdint.h>

/* The four entry points of an in-process component library. Each answers one of these. */
#define OMBRIX_OK 0
#define OMBRIX_FALSE 1
#define OMBRIX_CLASS_NOT_AVAILABLE (-2147221231)
#define OMBRIX_POINTER (-2147467261)

#ifdef __cplusplus
extern "C" {
#endif

/* Makes objects of one business class; owned by the library, never freed. In C++ it is an
   ombrix::ClassFactory. */
typedef struct ombrix_class_factory ombrix_class_factory;

/* Enters the names of the business classes, so that they can be made by name. They are entered when
   the library loads. */
int32_t DllRegisterServer(void);

/* Removes these names. Objects that live already are not touched. */
int32_t DllUnregisterServer(void);

/* Hands out the factory of a class ("OmbrixPurchase.LPO", without regard to case), entered or not.
   OMBRIX_CLASS_NOT_AVAILABLE and a null factory for another name; OMBRIX_POINTER when an argument
   is null. */
int32_t DllGetClassObject(const char* class_name, const ombrix_class_factory** factory);

/* OMBRIX_OK when no instance of a business class lives, OMBRIX_FALSE otherwise. */
int32_t DllCanUnloadNow(void);

#ifdef __cplusplus
}
#endif

#endif
