#pragma once

#include "tqplatform/runtime/Export.h"

class CArchive;
class CObject;

/// What the framework knows of a class at run time. Records are static; the framework keeps
/// pointers to them.
struct TQPLATFORM_API CRuntimeClass {
    char const *className;                ///< the name that archives store
    int objectSize;                       ///< bytes of an object
    unsigned int schema;                  ///< version of the stored form
    CObject *(*createObject)();           ///< makes a new empty object, or null if it can't be made
    CRuntimeClass const *(*baseClass)();  ///< gives the record of the base, or null
    CRuntimeClass *nextClass = nullptr;   ///< the framework's list of registered classes

    /// True if this is the class `base` or derives from it.
    bool IsDerivedFrom(CRuntimeClass const *base) const;
};

/// Root of the framework's classes.
class TQPLATFORM_API CObject {
  public:
    CObject(CObject const &) = delete;
    CObject &operator=(CObject const &) = delete;
    virtual ~CObject();

    /// The record of the object's class.
    virtual CRuntimeClass const *GetRuntimeClass() const;

    /// Stores the object's content in an archive or loads it. This class has none.
    virtual void Serialize(CArchive &archive);

    /// True if the object is of `runtimeClass` or of a class derived from it.
    bool IsKindOf(CRuntimeClass const *runtimeClass) const;

    /// The record of this class.
    static CRuntimeClass const classCObject;

  protected:
    CObject() = default;
};
