export {Quillbrook as default};
