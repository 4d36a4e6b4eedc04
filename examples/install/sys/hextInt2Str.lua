-- Prefixes of tree nodes for the levels above the managers. For every other class the result is nil, and
-- section [NodePrefix] of hextProfile.ini tells the prefix.

local PREFIX = {
    HextSite = "SITE ",
    HextZone = "ZONE ",
    HextZoneDirectory = "DIR ",
    HextStdFloor = "FLOOR ",
}

function getNodePrefix(className, objectId, text1, text2)
    return PREFIX[className]
end
