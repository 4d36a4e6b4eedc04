-- What MAXOUT makes of each object: a mesh or a spline, its insertion point, its property rows.
--
-- A point attribute reads as three numbers separated by tabs.

local POINT_KEYS = { "kpt_1", "kpt_2", "kpt_3", "kpt_4" }

local function pointOf(id, key)
    local text = plant.attribute(id, key)
    if text == nil or text == "" then
        return nil
    end
    local point = {}
    for number in string.gmatch(text, "[^%s,]+") do
        point[#point + 1] = tonumber(number)
    end
    if #point ~= 3 then
        return nil
    end
    return point
end

-- Grid lines go out as splines, everything else as a mesh.
function isObjChangeMesh(objectId)
    return plant.className(objectId) ~= "HxDbAxissLine"
end

function getObjCenterPt(objectId)
    return pointOf(objectId, "inspt")
end

function changeObj4Spline(objectId)
    local points = {}
    for _, key in ipairs(POINT_KEYS) do
        points[#points + 1] = pointOf(objectId, key)
    end
    return points
end

-- Points of one spline part.
function getPartNum()
    return 2
end

function getObjsize(objectId)
    local size = plant.attribute(objectId, "size1")
    if size == nil or size == "" then
        size = plant.attribute(objectId, "size")
    end
    return size or ""
end

function maxOutdata(objectId)
    local rows = {}
    for _, attribute in ipairs(plant.attributes(objectId) or {}) do
        if attribute.value ~= "" then
            rows[#rows + 1] = {
                value = attribute.value,
                key = attribute.key,
                description = attribute.description or "",
            }
        end
    end
    return rows
end
