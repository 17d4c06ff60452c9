#pragma once

/**
 * @file
 * Everything that the library exports. A source that needs one class family includes that family's own header.
 */

#include "VYXCompressionFileHelper.h"
#include "VYXIPropertyTreeVisitor.h"
#include "VYXITransferable.h"
#include "VYXInfError.h"
#include "VYXInfFileHelper.h"
#include "VYXInfLoadableContent.h"
#include "VYXInfLog.h"
#include "VYXInfMediaBase.h"
#include "VYXInfMediaContainer.h"
#include "VYXInfProfile.h"
#include "VYXInfStringUtil.h"
#include "VYXInfSystemUtil.h"
#include "VYXInfTransferableFactory.h"
#include "VYXInfUri.h"
#include "VYXInfi18n.h"
#include "VYXListAccess.h"
#include "VYXPropertyAccess.h"
#include "VYXPropertyTree.h"
#include "VYXPropertyTreeLists.h"
#include "VYXPropertyTreeTransfer.h"
