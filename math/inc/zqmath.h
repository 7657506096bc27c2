// zqmath.h: the whole public interface of the library.
#ifndef ZQMATH_ZQMATH_H
#define ZQMATH_ZQMATH_H

#include "mmmstd.h"
#include "zqexport.h"
#include "zqplatform.h"

#include "c2rect.h"
#include "c2subdivision.h"
#include "c2triangulation.h"
#include "c3curve.h"
#include "c3line.h"
#include "c3matrix.h"
#include "c3rregion.h"
#include "cquat.h"
#include "expression.h"
#include "mathdll.h"
#include "meshvector.h"
#include "quadedge.h"
#include "sfmatrix.h"
#include "sfvec2f.h"
#include "sfvec3f.h"
#include "sfvec4f.h"
#include "statisticspak.h"
#include "zqexception.h"

#endif
