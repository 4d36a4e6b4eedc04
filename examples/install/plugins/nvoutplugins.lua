-- What the exports call objects and which attributes go with them.
--
-- The platform offers the read-only table `plant`:
--   plant.attributes(id)      array of {key=, value=, description=}, in the platform's order
--   plant.attribute(id, key)  text of one attribute
--   plant.displayName(id)     name of the object
--   plant.className(id)       name of its run-time class
--   plant.owner(id)           id of its owner

-- RVMOUT: one pair of files for everything selected; false makes one pair for each database.
local ONE_PAIR_OF_FILES = true

-- Attributes that mean something to the model alone.
local INTERNAL = { zoneid = true, owner = true, specid = true, objid = true, module = true }

-- Order of the managers of a zone. Classes that are not named come last.
local CLASS_ORDER = { HextEquipe = 1, HextPipeline = 2, HextSupport = 3, HextStruct = 4, HextAxiss = 5 }

local function attributesOf(id)
    if id == nil or id == 0 then
        return {}
    end
    return plant.attributes(id) or {}
end

local function isEmpty(text)
    return text == nil or text == ""
end

-- Attributes as a user reads them: under their labels, without the empty and the internal ones.
function getReference(arguments)
    local rows = {}
    for _, attribute in ipairs(attributesOf(arguments.objid)) do
        if not INTERNAL[attribute.key] and not isEmpty(attribute.value) then
            local label = attribute.description
            rows[#rows + 1] = {
                key = isEmpty(label) and attribute.key or label,
                value = attribute.value,
                description = attribute.description,
            }
        end
    end
    return rows
end

-- The same for RVMOUT, under the keys themselves, with the class in front.
function getReferenceRvm(arguments)
    local id = arguments.objid
    local rows = {}
    if id == nil or id == 0 then
        return rows
    end
    rows[1] = { key = "Class", value = plant.className(id) or "" }
    for _, attribute in ipairs(attributesOf(id)) do
        if not INTERNAL[attribute.key] and not isEmpty(attribute.value) then
            rows[#rows + 1] = { key = attribute.key, value = attribute.value }
        end
    end
    return rows
end

function checkExportCustom()
    return ONE_PAIR_OF_FILES
end

-- The object's own name; for things in a pipe without one, their tag or family word.
function getNodeName(arguments)
    local id = arguments.objid
    local name = plant.displayName(id)
    if not isEmpty(name) then
        return name
    end
    if arguments.isplineobj then
        for _, key in ipairs({ "tag", "item" }) do
            local text = plant.attribute(id, key)
            if not isEmpty(text) then
                return text
            end
        end
    end
    return plant.className(id) or ""
end

-- Equipment first, then pipelines, supports, structures and grids, each by name.
function sortTreeNodes(ids)
    local keys = {}
    for _, id in ipairs(ids) do
        keys[id] = { CLASS_ORDER[plant.className(id)] or 9, plant.displayName(id) or "" }
    end
    local sorted = {}
    for index, id in ipairs(ids) do
        sorted[index] = id
    end
    table.sort(sorted, function(a, b)
        local ka, kb = keys[a], keys[b]
        if ka[1] ~= kb[1] then
            return ka[1] < kb[1]
        end
        if ka[2] ~= kb[2] then
            return ka[2] < kb[2]
        end
        return a < b
    end)
    return sorted
end
